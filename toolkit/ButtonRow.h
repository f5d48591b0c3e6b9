// A row of buttons at the bottom of a dialog.
#pragma once

#include <View.h>

#include <vector>

class BButton;

class ButtonRow : public BView {
public:
    ButtonRow();

    // Appends a button; its message goes to the window.
    BButton* AddButton(const char* name, const char* label, uint32 what);
    // Null in an empty row.
    BButton* LastButton() const { return buttons.empty() ? nullptr : buttons.back(); }

    // Fills frame, in the window's coordinates, and lays the buttons out at its right: all as wide
    // as the widest label needs, with even gaps. They stay there when the window is resized.
    void Arrange(BRect frame);
    // The height that the buttons need with their margins, and the width.
    float RowHeight() const;
    float RowWidth() const;

private:
    std::vector<BButton*> buttons;
    float buttonWidth = 0;
};
