// Where the program's windows go on the screen, as plain arithmetic.
#pragma once

#include <Rect.h>

// The rules that LibWindow::SetPosition() knows; any other number counts as kCascade.
enum window_position {
    kCascade = 0, // below and to the right of the window placed before, then from the top again
    kCentred = 1, // in the middle of the screen
    kBesideMain = 4, // at the main window's right, else at its left, else in the screen's corner
};

struct WindowPlacement {
    BRect screen;
    BRect mainWindow; // invalid while there is none

    // The left top corner for a window of this frame. The window lies wholly on the screen with the
    // title and borders that a window manager puts around it; one too large for that starts in
    // the left top corner. nth counts the windows that were cascaded before this one.
    BPoint Place(BRect window, int32 position, int32 nth) const;
    // The frame, moved onto the screen if it does not lie there.
    BRect FitInScreen(BRect window) const;

private:
    BRect Room(BRect window) const;
    BPoint Cascaded(BRect room, int32 nth) const;
    BPoint BesideMain(BRect window, BRect room) const;
};
