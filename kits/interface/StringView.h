// One line of text.
#pragma once

#include "View.h"

#include <string>

class BStringView : public BView {
public:
    BStringView(BRect frame, const char* name, const char* text,
        uint32 resizeMode = B_FOLLOW_LEFT | B_FOLLOW_TOP, uint32 flags = B_WILL_DRAW);

    void SetText(const char* text); // null is an empty one
    const char* Text() const { return fText.c_str(); }
    void SetAlignment(alignment side);
    alignment Alignment() const { return fAlignment; }
    void SetHighColor(rgb_color color) override; // of the text; before that the desktop's own
    using BView::SetHighColor;

    void AttachedToWindow() override; // takes the parent's view colour
    void GetPreferredSize(float* width, float* height) override; // of the text

protected:
    void MakeWidget(ViewPeer& peer) override;

private:
    std::string fText;
    alignment fAlignment = B_ALIGN_LEFT;
    bool fHasColor = false;
};
