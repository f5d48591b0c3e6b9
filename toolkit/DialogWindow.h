// A window with contents above a row of buttons.
#pragma once

#include "toolkit/LibWindow.h"

class BView;
class ButtonRow;

// Contents go into Background(), buttons into a row that SetDefaultRow() hands over. Escape closes
// the window as its close box does.
class DialogWindow : public LibWindow {
public:
    DialogWindow(BRect frame, const char* name, const char* title, uint32 flags = 0);

    BView* Background() const { return background; }
    // Puts the row, owned by the window from here on, below the background, which gives way to it;
    // a window too narrow for the row grows. The last button becomes the one that Enter presses.
    // Only once.
    void SetDefaultRow(ButtonRow* row);

private:
    BView* background;
};
