#include "Point.h"

#include "Rect.h"

#include <algorithm>

const BPoint B_ORIGIN(0, 0);

void BPoint::ConstrainTo(BRect rect)
{
    x = std::max(std::min(x, rect.right), rect.left);
    y = std::max(std::min(y, rect.bottom), rect.top);
}
