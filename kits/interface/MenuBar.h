// The row of menus at the top of a window, reached with the mouse, F10, or Alt and the underlined
// letter. Added to a window it takes the window's width, its own height and becomes the key menu
// bar if there was none.
#pragma once

#include "Menu.h"

class BMenuBar : public BMenu {
public:
    BMenuBar(BRect frame, const char* name, uint32 resizeMode = B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP,
        uint32 flags = B_WILL_DRAW);

    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void GetPreferredSize(float* width, float* height) override;

protected:
    void MakeWidget(ViewPeer& peer) override;
};
