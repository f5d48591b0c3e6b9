// A rectangle whose edges belong to it: (0, 0, 9, 9) is ten pixels wide and high, and Width(),
// the distance of its edges, is 9. Valid while right >= left and bottom >= top; a new one is
// (0, 0, -1, -1), which is not.
#pragma once

#include "Point.h"

class BRect {
public:
    BRect() = default;
    BRect(float l, float t, float r, float b) : left(l), top(t), right(r), bottom(b) { }
    BRect(BPoint leftTop, BPoint rightBottom)
        : left(leftTop.x), top(leftTop.y), right(rightBottom.x), bottom(rightBottom.y)
    {
    }

    bool IsValid() const { return right >= left && bottom >= top; }
    float Width() const { return right - left; }
    float Height() const { return bottom - top; }
    int32 IntegerWidth() const; // Width() rounded up
    int32 IntegerHeight() const;
    void Set(float l, float t, float r, float b) { *this = BRect(l, t, r, b); }

    BPoint LeftTop() const { return BPoint(left, top); }
    BPoint RightTop() const { return BPoint(right, top); }
    BPoint LeftBottom() const { return BPoint(left, bottom); }
    BPoint RightBottom() const { return BPoint(right, bottom); }

    // Each moves the rectangle in place; a positive inset makes it smaller on every side.
    void InsetBy(float dx, float dy);
    void OffsetBy(float dx, float dy);
    void OffsetTo(float x, float y) { OffsetBy(x - left, y - top); }
    void OffsetTo(BPoint leftTop) { OffsetTo(leftTop.x, leftTop.y); }
    // The same on a copy.
    BRect InsetByCopy(float dx, float dy) const;
    BRect OffsetByCopy(float dx, float dy) const;
    BRect OffsetToCopy(float x, float y) const;

    // False for an invalid rectangle; edges count as inside.
    bool Intersects(BRect rect) const;
    bool Contains(BPoint point) const;
    bool Contains(BRect rect) const;
    BRect operator&(BRect rect) const; // common part; invalid where there is none
    BRect operator|(BRect rect) const; // smallest rectangle around both
    bool operator==(const BRect& rect) const = default;

    float left = 0;
    float top = 0;
    float right = -1;
    float bottom = -1;
};
