#include "Rect.h"

#include <algorithm>
#include <cmath>

const BPoint B_ORIGIN(0, 0);

void BPoint::ConstrainTo(BRect rect)
{
    // Left and top are what counts where rect is inside out.
    x = std::max(std::min(x, rect.right), rect.left);
    y = std::max(std::min(y, rect.bottom), rect.top);
}

int32 BRect::IntegerWidth() const
{
    return static_cast<int32>(std::ceil(Width()));
}

int32 BRect::IntegerHeight() const
{
    return static_cast<int32>(std::ceil(Height()));
}

void BRect::InsetBy(float dx, float dy)
{
    Set(left + dx, top + dy, right - dx, bottom - dy);
}

void BRect::OffsetBy(float dx, float dy)
{
    Set(left + dx, top + dy, right + dx, bottom + dy);
}

BRect BRect::InsetByCopy(float dx, float dy) const
{
    BRect copy(*this);
    copy.InsetBy(dx, dy);
    return copy;
}

BRect BRect::OffsetByCopy(float dx, float dy) const
{
    BRect copy(*this);
    copy.OffsetBy(dx, dy);
    return copy;
}

BRect BRect::OffsetToCopy(float x, float y) const
{
    BRect copy(*this);
    copy.OffsetTo(x, y);
    return copy;
}

bool BRect::Intersects(BRect rect) const
{
    return (*this & rect).IsValid(); // no part of an invalid one is valid
}

bool BRect::Contains(BPoint point) const
{
    return point.x >= left && point.x <= right && point.y >= top && point.y <= bottom;
}

bool BRect::Contains(BRect rect) const
{
    // The corners of one that is inside out may lie inside too.
    return IsValid() && rect.IsValid() && Contains(rect.LeftTop()) && Contains(rect.RightBottom());
}

BRect BRect::operator&(BRect rect) const
{
    return BRect(std::max(left, rect.left), std::max(top, rect.top), std::min(right, rect.right),
        std::min(bottom, rect.bottom));
}

BRect BRect::operator|(BRect rect) const
{
    return BRect(std::min(left, rect.left), std::min(top, rect.top), std::max(right, rect.right),
        std::max(bottom, rect.bottom));
}
