#include "toolkit/LibWindow.h"

#include "toolkit/LibHelp.h"

#include <Application.h>
#include <Autolock.h>
#include <InterfaceDefs.h>
#include <Message.h>
#include <Screen.h>
#include <View.h>

#include <algorithm>
#include <cmath>
#include <map>

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
    return position == kBesideMain ? ClearOfOthers(window, room, corner) : corner;
}

BPoint WindowPlacement::Over(BRect window, BRect other) const
{
    BPoint corner(std::floor((other.left + other.right - window.Width()) / 2),
        std::floor((other.top + other.bottom - window.Height()) / 2));
    corner.ConstrainTo(Room(window));
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

// The usual place, or the first beside or below another window, where all other windows stay in
// sight; else the first, a title lower each, where their titles do.
BPoint WindowPlacement::ClearOfOthers(BRect window, BRect room, BPoint usual) const
{
    std::vector<BPoint> places { usual };
    for (const BRect& other : others) {
        places.emplace_back(other.right + 1 + 2 * kBorder, other.top);
        places.emplace_back(other.left - 2 * kBorder - window.Width() - 1, other.top);
    }
    for (const BRect& other : others)
        places.emplace_back(other.left, other.bottom + 1 + kBorder + kTitle);
    for (const BPoint& place : places) {
        if (room.Contains(place) && !Hides(window, place, false))
            return place;
    }
    for (BPoint place = usual; place.y <= room.bottom; place += BPoint(kTitle, kTitle)) {
        place.ConstrainTo(room);
        if (!Hides(window, place, true))
            return place;
    }
    return usual;
}

// Whether the window would lie, with its title and borders, over another one, or over its title.
bool WindowPlacement::Hides(BRect window, BPoint corner, bool titlesOnly) const
{
    const auto whole = [](BRect frame) {
        return BRect(frame.left - kBorder, frame.top - kTitle, frame.right + kBorder,
            frame.bottom + kBorder);
    };
    const BRect hidden = whole(window.OffsetToCopy(corner.x, corner.y));
    return std::any_of(others.begin(), others.end(), [&](const BRect& other) {
        BRect seen = whole(other);
        if (titlesOnly)
            seen.bottom = other.top - 1;
        return hidden.Intersects(seen);
    });
}

namespace {

// Every window has a thread of its own, so what they share is locked; never while a window's
// function is called.
BLocker& gLock = *new BLocker; // never destroyed: windows may outlive static objects
BRect gMainFrame GUARDED_BY(gLock);
int32 gCascaded GUARDED_BY(gLock) = 0;
std::map<const LibWindow*, BRect> gShown GUARDED_BY(gLock); // where those are that are in sight

} // namespace

// All function keys have the same byte: the key's number tells which one it was.
bool LibIsShiftedKey(const BMessage* message, int32 wanted)
{
    int32 key = 0, modifiers = 0;
    return message && message->FindInt32("key", &key) == B_OK && key == wanted
        && message->FindInt32("modifiers", &modifiers) == B_OK && (modifiers & B_SHIFT_KEY);
}

BRect LibFitInScreen(BRect frame)
{
    WindowPlacement placement;
    placement.screen = BScreen(B_MAIN_SCREEN_ID).Frame();
    return placement.FitInScreen(frame);
}

LibWindow::LibWindow(BRect frame, const char* title, window_look look, window_feel feel,
    uint32 flags, uint32 workspaces)
    : BWindow(frame, title, look, feel, flags, workspaces)
{
}

LibWindow::~LibWindow()
{
    const BAutolock lock(gLock);
    // Nothing is to be placed beside a window that has gone.
    gShown.erase(this);
    if (mainWindow)
        gMainFrame = BRect();
}

void LibWindow::SetPosition(const int32& position)
{
    WindowPlacement placement;
    placement.screen = BScreen(B_MAIN_SCREEN_ID).Frame();
    int32 nth = 0;
    {
        const BAutolock lock(gLock);
        placement.mainWindow = gMainFrame;
        for (const auto& [window, frame] : gShown) {
            if (window != this)
                placement.others.push_back(frame);
        }
        // Only windows that are cascaded count, else there would be gaps in the cascade.
        if (position != kCentred && position != kBesideMain)
            nth = gCascaded++;
    }
    MoveTo(placement.Place(Frame(), position, nth));
    isBesideMain = position == kBesideMain;
}

void LibWindow::SetPositionOver(BRect frame)
{
    WindowPlacement placement;
    placement.screen = BScreen(B_MAIN_SCREEN_ID).Frame();
    MoveTo(placement.Over(Frame(), frame));
    isBesideMain = false;
}

void LibWindow::DispatchMessage(BMessage* message, BHandler* handler)
{
    // Before the view in focus gets it: no control has a use for these keys.
    const char* bytes = nullptr;
    if (message->what == B_KEY_DOWN && message->FindString("bytes", &bytes) == B_OK) {
        if (bytes[0] == B_ESCAPE && escapeCloses) {
            PostMessage(B_QUIT_REQUESTED);
            return;
        }
        if (LibIsShiftedKey(message, B_F1_KEY))
            return AskForHelp();
    }
    // Not by QuitRequested(): the application asks that when it quits, and must get a yes.
    if (message->what == B_QUIT_REQUESTED && closeHides) {
        if (!IsHidden())
            Hide();
        return;
    }
    BWindow::DispatchMessage(message, handler);
}

void LibWindow::AskForHelp() const
{
    // From the control outwards, the window last: the application takes the first that has help.
    BMessage request('help');
    for (const BView* view = CurrentFocus(); view; view = view->Parent()) {
        if (view->Name())
            request.AddString("topic", view->Name());
    }
    request.AddString("topic", Name() ? Name() : "");
    be_app->PostMessage(&request);
}

void LibWindow::Show()
{
    const BAutolock lock(this);
    if (!hasToolTips) {
        hasToolTips = true;
        LibApplyToolTips(this);
    }
    if (!hasAppeared && isBesideMain)
        SetPosition(kBesideMain);
    BWindow::Show();
    hasAppeared = hasAppeared || !IsHidden();
    KeepFrame();
}

void LibWindow::Hide()
{
    const BAutolock lock(this);
    BWindow::Hide();
    KeepFrame();
}

void LibWindow::FrameMoved(BPoint corner)
{
    KeepFrame();
    BWindow::FrameMoved(corner);
}

void LibWindow::FrameResized(float width, float height)
{
    KeepFrame();
    BWindow::FrameResized(width, height);
}

void LibWindow::SetMainWindow()
{
    mainWindow = true;
    KeepFrame();
}

void LibWindow::KeepFrame()
{
    const BRect frame = Frame();
    const BAutolock lock(gLock);
    if (mainWindow)
        gMainFrame = frame;
    if (IsHidden())
        gShown.erase(this);
    else
        gShown[this] = frame;
}

rgb_color LibOnPanel(rgb_color color)
{
    // Half of full brightness, of three parts together.
    constexpr int kDark = 3 * 128;
    constexpr int kBrighter = 110;
    const rgb_color panel = ui_color(B_PANEL_BACKGROUND_COLOR);
    if (panel.red + panel.green + panel.blue >= kDark)
        return color;
    const auto brighter = [](uint8 part) {
        return static_cast<uint8>(std::min(part + kBrighter, 255));
    };
    return { brighter(color.red), brighter(color.green), brighter(color.blue), color.alpha };
}
