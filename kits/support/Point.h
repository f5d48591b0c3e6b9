// A point of a view's or the screen's coordinate system: x grows to the right, y downwards.
#pragma once

#include "SupportDefs.h"

class BRect;

class BPoint {
public:
    BPoint() = default;
    BPoint(float pointX, float pointY) : x(pointX), y(pointY) { }

    void Set(float pointX, float pointY)
    {
        x = pointX;
        y = pointY;
    }
    // Moves the point to the nearest one inside rect.
    void ConstrainTo(BRect rect);

    BPoint operator+(const BPoint& p) const { return BPoint(x + p.x, y + p.y); }
    BPoint operator-(const BPoint& p) const { return BPoint(x - p.x, y - p.y); }
    BPoint& operator+=(const BPoint& p) { return *this = *this + p; }
    BPoint& operator-=(const BPoint& p) { return *this = *this - p; }
    bool operator==(const BPoint& p) const = default;

    float x = 0;
    float y = 0;
};

extern const BPoint B_ORIGIN; // (0, 0)
