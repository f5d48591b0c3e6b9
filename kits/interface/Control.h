// A view that the user sets off: it keeps a label, a value and a message that Invoke() sends, by
// default to its window.
#pragma once

#include "Invoker.h"
#include "View.h"

#include <string>

class BControl : public BView, public BInvoker {
public:
    // The control owns message, which may be null.
    BControl(BRect frame, const char* name, const char* label, BMessage* message,
        uint32 resizeMode = B_FOLLOW_LEFT | B_FOLLOW_TOP, uint32 flags = B_WILL_DRAW | B_NAVIGABLE);

    void AttachedToWindow() override; // takes the parent's view colour; the target if it has none

    virtual void SetLabel(const char* label); // null is an empty one
    const char* Label() const { return fLabel.c_str(); }
    virtual void SetValue(int32 value);
    int32 Value() const { return fValue; }
    virtual void SetEnabled(bool enabled); // a disabled control takes no input and looks grey
    bool IsEnabled() const { return fEnabled; }

    // Sends a copy of message, or of the control's own one, with "when" (int64, microseconds),
    // "source" (pointer, this) and "be:value" (int32) added. B_BAD_VALUE without any message.
    status_t Invoke(BMessage* message = nullptr) override;
    void GetPreferredSize(float* width, float* height) override; // of label and all

protected:
    // The user's change, to be taken over: SetValue() does not send it back to the widget.
    void WidgetChanged(BMessage* report) override;
    // On the display server: put label and value into the widget.
    virtual void ShowLabel(ViewPeer& /*peer*/) { }
    virtual void ShowValue(ViewPeer& /*peer*/, int32 /*value*/) { }
    // For MakeWidget(), at its end: all that controls have in common.
    void EquipWidget(ViewPeer& peer);

private:
    std::string fLabel;
    int32 fValue = B_CONTROL_OFF;
    int32 fShownValue = B_CONTROL_OFF; // what the widget shows, by its last report
    bool fEnabled = true;
};
