// The row of menus at the top of a window, reached with the mouse, with Alt, or with Alt and the
// underlined letter. In a window it reaches to the right edge of what it lies in, is as high as its
// labels need and becomes the key menu bar if there was none.
#pragma once

#include "Menu.h"

class BMenuBar : public BMenu {
public:
    BMenuBar(BRect frame, const char* name, uint32 resizeMode = B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP,
        uint32 flags = B_WILL_DRAW);

    ~BMenuBar() override;

    void AttachedToWindow() override;
    void DetachedFromWindow() override;
    void GetPreferredSize(float* width, float* height) override;

protected:
    void MakeWidget(ViewPeer& peer) override;
};
