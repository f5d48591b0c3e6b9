// A window with contents above a row of buttons.
#pragma once

#include "toolkit/LibWindow.h"

#include <View.h>

#include <vector>

class BButton;
class StatusLine;

// A row of buttons at the bottom of a dialog.
class ButtonRow : public BView {
public:
    ButtonRow();

    // Appends a button; its message goes to the window.
    BButton* AddButton(const char* name, const char* label, uint32 what);
    // Puts a line of text, empty at first, left of the buttons. Only once. The row owns it.
    StatusLine* AddStatus(const char* name);
    // Null in an empty row.
    BButton* LastButton() const { return buttons.empty() ? nullptr : buttons.back(); }

    // Fills frame, in the window's coordinates, and lays the buttons out at its right: all as wide
    // as the widest label needs, with even gaps. They stay there when the window is resized, and
    // the line of text takes what is left.
    void Arrange(BRect frame);
    // The height that the buttons need with their margins, and the width, with that of a short line
    // of text if there is one.
    float RowHeight() const;
    float RowWidth() const;

private:
    std::vector<BButton*> buttons;
    float buttonWidth = 0;
    StatusLine* status = nullptr; // if there is one
};

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
