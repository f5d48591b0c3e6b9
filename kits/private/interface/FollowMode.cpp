#include "FollowMode.h"

namespace {

// Edges of the parent as a mode's digits name them.
constexpr uint32 kBottom = 3;
constexpr uint32 kRight = 4;
constexpr uint32 kMiddle = 5;

float Moved(uint32 mode, int digit, float delta)
{
    const uint32 edge = mode >> (4 * digit) & 0xf;
    if (edge == kMiddle)
        return delta / 2;
    return edge == kBottom || edge == kRight ? delta : 0;
}

} // namespace

BRect FollowParent(BRect frame, uint32 mode, float dx, float dy)
{
    frame.top += Moved(mode, 3, dy);
    frame.left += Moved(mode, 2, dx);
    frame.bottom += Moved(mode, 1, dy);
    frame.right += Moved(mode, 0, dx);
    return frame;
}
