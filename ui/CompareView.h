// The legend of the comparison: the colour of each processor count. A click on one, or the arrow
// keys and Enter, opens the colour chooser for it.
#pragma once

#include "results/ComparisonChart.h"
#include "toolkit/OwnedWindow.h"

#include <GraphicsDefs.h>
#include <View.h>

class LibColorChooser;

// All calls with the window locked.
class CompareView : public BView {
public:
    explicit CompareView(BRect frame); // gives the colours their first values
    ~CompareView() override;

    // Takes the chooser's colour over and ends it, if the message says that it closes, and not one
    // that was chosen from before.
    void ChooserClosed(const BMessage& closing);
    // Closes the chooser, if one is open, without its colour: the window goes.
    void CloseChooser();

    void Draw(BRect update) override;
    void MouseDown(BPoint where) override;
    void KeyDown(const char* bytes, int32 numBytes) override;
    void MakeFocus(bool focus = true) override;
    void WindowActivated(bool active) override;

private:
    BRect FrameOf(int32 index) const;
    void MoveCursor(int32 step);
    void Choose(int32 index);

    OwnedWindow<LibColorChooser> chooser; // open
    int32 chosen = 0; // the colour that it is for
    int32 cursor = 0; // the one that Enter chooses
};
