// A bar that fills as work is done; without the platform's labels.
#pragma once

#include "View.h"

class BStatusBar : public BView {
public:
    // It is as high as frame, and empty; full is 100.
    BStatusBar(BRect frame, const char* name, uint32 resizeMode = B_FOLLOW_LEFT | B_FOLLOW_TOP);

    void SetMaxValue(float max); // above 0, else nothing changes
    float MaxValue() const { return fMax; }
    float CurrentValue() const { return fCurrent; }
    // Adds to the current value, which stays between 0 and MaxValue().
    void Update(float delta);
    // Empties it; full is 100 again.
    void Reset();

    void AttachedToWindow() override; // takes the parent's view colour

protected:
    void MakeWidget(ViewPeer& peer) override;

private:
    void ShowValue();

    float fMax = 100;
    float fCurrent = 0;
};
