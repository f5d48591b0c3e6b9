// The base of all of the program's windows.
#pragma once

#include "toolkit/WindowPlacement.h"

#include <Window.h>

// A BWindow that knows where to go on the screen.
class LibWindow : public BWindow {
public:
    LibWindow(BRect frame, const char* title, window_look look, window_feel feel, uint32 flags,
        uint32 workspaces = B_CURRENT_WORKSPACE);
    ~LibWindow() override;

    // Moves the window to the place that a rule of window_position gives it, wholly on the main
    // screen. The window must be locked, or not shown yet.
    void SetPosition(const int32& position = kCascade);

    void FrameMoved(BPoint corner) override;
    void FrameResized(float width, float height) override;

protected:
    // From here on kBesideMain places other windows beside this one, wherever it moves.
    void SetMainWindow();

private:
    void KeepMainFrame();

    bool mainWindow = false;
};
