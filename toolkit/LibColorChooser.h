// A window of colours, one of which the user picks with a click, or with the arrow keys and Enter.
// Escape and the close box leave the colour as it was.
#pragma once

#include "toolkit/LibWindow.h"

#include <GraphicsDefs.h>

class BLooper;

class LibColorChooser : public LibWindow {
public:
    // target gets 'ColC' when the user is done; it then reads Color() and quits the window.
    LibColorChooser(BLooper* target, const char* title, rgb_color color);

    // The picked colour, at first that of the constructor. The window must be locked.
    rgb_color Color() const { return picked; }
    void Pick(rgb_color color); // and tells the target

    bool QuitRequested() override;

private:
    BLooper* target;
    rgb_color picked;
};
