// A box that the user ticks: B_CONTROL_ON or B_CONTROL_OFF.
#pragma once

#include "Control.h"

class BCheckBox : public BControl {
public:
    BCheckBox(BRect frame, const char* name, const char* label, BMessage* message,
        uint32 resizeMode = B_FOLLOW_LEFT | B_FOLLOW_TOP, uint32 flags = B_WILL_DRAW | B_NAVIGABLE);

protected:
    void MakeWidget(ViewPeer& peer) override;
    void ShowLabel(ViewPeer& peer) override;
    void ShowValue(ViewPeer& peer, int32 value) override;
};
