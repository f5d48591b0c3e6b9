// A label in front of a view.
#pragma once

#include <View.h>

class LibLabelFrame : public BView {
public:
    // content, which the frame owns, stands right of the label, with this room around it. The label
    // has its font.
    LibLabelFrame(BRect frame, const char* label, float labelWidth, float inset, BView* content);

    void AttachedToWindow() override; // takes the parent's view colour
};
