// The legend of the comparison: the colour of each processor count. A click on one, or the arrow
// keys and Enter, opens the colour chooser for it.
#pragma once

#include <View.h>

class LibColorChooser;

// All calls with the window locked.
class CompareView : public BView {
public:
    explicit CompareView(BRect frame); // gives the colours their first values

    // Closes the chooser and takes its colour over.
    void ChooserClosed();
    // Closes the chooser, if one is open, without its colour: the window goes.
    void CloseChooser();

    void Draw(BRect update) override;
    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void MakeFocus(bool focus = true) override;

private:
    BRect FrameOf(int32 index) const;
    void MoveCursor(int32 step);
    void Choose(int32 index);

    LibColorChooser* chooser = nullptr; // open
    int32 chosen = -1; // the colour that it is for
    int32 cursor = 0; // the one that Enter chooses
};
