#include "toolkit/LibWindow.h"

#include <Screen.h>

#include <mutex>

namespace {

// Every window has a thread of its own, so what they share is locked; never while a window's
// function is called.
std::mutex gLock;
BRect gMainFrame;
int32 gCascaded = 0;

} // namespace

LibWindow::LibWindow(BRect frame, const char* title, window_look look, window_feel feel,
    uint32 flags, uint32 workspaces)
    : BWindow(frame, title, look, feel, flags, workspaces)
{
}

LibWindow::~LibWindow()
{
    if (!mainWindow)
        return;
    const std::lock_guard lock(gLock);
    gMainFrame = BRect();
}

void LibWindow::SetPosition(const int32& position)
{
    WindowPlacement placement;
    placement.screen = BScreen(B_MAIN_SCREEN_ID).Frame();
    int32 nth = 0;
    {
        const std::lock_guard lock(gLock);
        placement.mainWindow = gMainFrame;
        if (position != kCentred && position != kBesideMain)
            nth = gCascaded++;
    }
    MoveTo(placement.Place(Frame(), position, nth));
    KeepMainFrame();
}

void LibWindow::FrameMoved(BPoint corner)
{
    KeepMainFrame();
    BWindow::FrameMoved(corner);
}

void LibWindow::FrameResized(float width, float height)
{
    KeepMainFrame();
    BWindow::FrameResized(width, height);
}

void LibWindow::SetMainWindow()
{
    mainWindow = true;
    KeepMainFrame();
}

void LibWindow::KeepMainFrame()
{
    if (!mainWindow)
        return;
    const BRect frame = Frame();
    const std::lock_guard lock(gLock);
    gMainFrame = frame;
}
