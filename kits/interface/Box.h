// A labelled frame around other views.
#pragma once

#include "View.h"

#include <string>

class BBox : public BView {
public:
    explicit BBox(BRect frame, const char* name = nullptr,
        uint32 resizeMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
        uint32 flags = B_WILL_DRAW | B_FRAME_EVENTS | B_NAVIGABLE_JUMP,
        border_style border = B_FANCY_BORDER);

    void SetLabel(const char* label); // null is an empty one
    const char* Label() const { return fLabel.c_str(); }
    void AttachedToWindow() override; // takes the parent's view colour

protected:
    void MakeWidget(ViewPeer& peer) override;

private:
    std::string fLabel;
    const border_style fBorder;
};
