#include "toolkit/WindowPlacement.h"

#include <algorithm>
#include <cmath>

namespace {

// What a window manager adds around a window; the platform's frames do not count it.
constexpr float kTitle = 28;
constexpr float kBorder = 6;

constexpr float kCascadeStart = 40; // from the screen's corner to the first window
constexpr float kCascadeStep = 24;

} // namespace

BPoint WindowPlacement::Place(BRect window, int32 position, int32 nth) const
{
    const BRect room = Room(window);
    BPoint corner;
    switch (position) {
        case kCentred:
            corner.Set(
                std::floor((room.left + room.right) / 2), std::floor((room.top + room.bottom) / 2));
            break;
        case kBesideMain: corner = BesideMain(window, room); break;
        default: corner = Cascaded(room, nth); break;
    }
    corner.ConstrainTo(room);
    return corner;
}

BRect WindowPlacement::FitInScreen(BRect window) const
{
    BPoint corner = window.LeftTop();
    corner.ConstrainTo(Room(window));
    return window.OffsetToCopy(corner.x, corner.y);
}

// The corners at which the window is wholly visible; at least one.
BRect WindowPlacement::Room(BRect window) const
{
    BRect room(screen.left + kBorder, screen.top + kTitle, screen.right - kBorder - window.Width(),
        screen.bottom - kBorder - window.Height());
    room.right = std::max(room.left, room.right);
    room.bottom = std::max(room.top, room.bottom);
    return room;
}

BPoint WindowPlacement::Cascaded(BRect room, int32 nth) const
{
    const BPoint first = room.LeftTop() + BPoint(kCascadeStart, kCascadeStart);
    // The shorter way decides, so that the screen's edge pushes no two windows onto one place.
    const float way = std::min(room.right - first.x, room.bottom - first.y);
    const int32 places = way < 0 ? 1 : static_cast<int32>(way / kCascadeStep) + 1;
    const float step = static_cast<float>(nth % places) * kCascadeStep;
    return first + BPoint(step, step);
}

BPoint WindowPlacement::BesideMain(BRect window, BRect room) const
{
    if (!mainWindow.IsValid())
        return room.RightTop();
    // A border of either window lies between the two frames.
    const float right = mainWindow.right + 1 + 2 * kBorder;
    if (right <= room.right)
        return BPoint(right, mainWindow.top);
    const float left = mainWindow.left - 2 * kBorder - window.Width() - 1;
    if (left >= room.left)
        return BPoint(left, mainWindow.top);
    return room.RightTop();
}
