// A frame with scroll bars around a target view, which becomes its child and fills it.
#pragma once

#include "View.h"

class BScrollView : public BView {
public:
    // Lies around target's frame. The target then follows all sides.
    BScrollView(const char* name, BView* target, uint32 resizeMode = B_FOLLOW_LEFT | B_FOLLOW_TOP,
        uint32 flags = 0, bool horizontal = false, bool vertical = false,
        border_style border = B_FANCY_BORDER);

    BScrollBar* ScrollBar(orientation direction) const; // null where it has none
    border_style Border() const { return fBorder; }
    void AttachedToWindow() override; // takes the parent's view colour

protected:
    void MakeWidget(ViewPeer& peer) override;

private:
    BScrollBar* fHorizontal = nullptr;
    BScrollBar* fVertical = nullptr;
    border_style fBorder;
};
