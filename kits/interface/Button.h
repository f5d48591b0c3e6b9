// A push button. Its value is B_CONTROL_OFF again when its message has been sent.
#pragma once

#include "Control.h"

class BButton : public BControl {
public:
    BButton(BRect frame, const char* name, const char* label, BMessage* message,
        uint32 resizeMode = B_FOLLOW_LEFT | B_FOLLOW_TOP, uint32 flags = B_WILL_DRAW | B_NAVIGABLE);

    // The default button is pressed by Enter, wherever the keyboard is, and marked as such. One a
    // window: the one before no longer is.
    virtual void MakeDefault(bool state);
    bool IsDefault() const { return fDefault; }
    // Underlines the first such letter of the label, in either case: a key that presses the button,
    // with the option key at least. The window knows when it does alone.
    void SetMnemonic(char letter);
    void AttachedToWindow() override;

protected:
    void MakeWidget(ViewPeer& peer) override;
    void ShowLabel(ViewPeer& peer) override;
    void WidgetChanged(BMessage* report) override;

private:
    friend class BWindow;

    void ShowDefault(bool state);

    bool fDefault = false;
    char fMnemonic = '\0';
};
