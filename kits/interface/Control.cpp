#include "Control.h"

#include "Message.h"
#include "server/DisplayServer.h"
#include "server/ViewPeer.h"
#include "Window.h"

BControl::BControl(BRect frame, const char* name, const char* label, BMessage* message,
    uint32 resizeMode, uint32 flags)
    : BView(frame, name, resizeMode, flags), fLabel(label ? label : "")
{
    SetMessage(message);
    BView::SetViewColor(B_TRANSPARENT_COLOR);
}

void BControl::AttachedToWindow()
{
    if (Parent())
        SetViewColor(Parent()->ViewColor());
    if (!Messenger().IsValid())
        SetTarget(Window());
}

void BControl::SetLabel(const char* label)
{
    fLabel = label ? label : "";
    if (Peer())
        display::Call([this] { ShowLabel(*Peer()); });
}

void BControl::SetValue(int32 value)
{
    // What the widget shows already is not sent back: the user may have gone on since, and would
    // see it jump.
    fValue = value;
    if (!Peer() || value == fShownValue)
        return;
    fShownValue = value;
    display::Call([this, value] { ShowValue(*Peer(), value); });
}

void BControl::SetEnabled(bool enabled)
{
    fEnabled = enabled;
    if (Peer())
        display::Call([this] { Peer()->widget->setEnabled(fEnabled); });
}

void BControl::EquipWidget(ViewPeer& peer)
{
    Equip(peer, Name(), ViewEvents::Kind::kControl);
    ShowLabel(peer);
    ShowValue(peer, fValue);
    fShownValue = fValue;
    peer.widget->setEnabled(fEnabled);
}

void BControl::WidgetChanged(BMessage* report)
{
    int32 value = fValue;
    report->FindInt32("be:value", &value);
    fShownValue = value;
    // In this order: a subclass may make another value of it, and the message tells that one.
    SetValue(value);
    Invoke();
}

status_t BControl::Invoke(BMessage* message)
{
    return InvokeFrom(this, "be:value", fValue, message);
}

void BControl::GetPreferredSize(float* width, float* height)
{
    GetWidgetSize(width, height);
}
