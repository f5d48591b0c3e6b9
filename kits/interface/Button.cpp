#include "Button.h"

#include "Message.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/ViewPeer.h"
#include "Window.h"

#include <QPushButton>

BButton::BButton(BRect frame, const char* name, const char* label, BMessage* message,
    uint32 resizeMode, uint32 flags)
    : BControl(frame, name, label, message, resizeMode, flags)
{
}

void BButton::MakeDefault(bool state)
{
    // Outside a window it is only remembered: AttachedToWindow() tells the window then.
    fDefault = state;
    if (!Window())
        return;
    if (state)
        Window()->SetDefaultButton(this);
    else if (Window()->DefaultButton() == this)
        Window()->SetDefaultButton(nullptr);
}

void BButton::AttachedToWindow()
{
    BControl::AttachedToWindow();
    if (fDefault)
        Window()->SetDefaultButton(this);
}

// The window's part of SetDefaultButton().
void BButton::ShowDefault(bool state)
{
    fDefault = state;
    if (Peer())
        display::Call([this] { static_cast<QPushButton*>(Peer()->widget)->setDefault(fDefault); });
}

void BButton::MakeWidget(ViewPeer& peer)
{
    auto* button = new QPushButton(peer.parent);
    button->setAutoDefault(true); // Enter presses the one that has the keyboard
    QObject::connect(button, &QPushButton::clicked, button, [link = peer.link] {
        BMessage report(kMsgWidgetChanged);
        report.AddInt32("be:value", B_CONTROL_ON);
        link->Post(report);
    });
    peer.widget = button;
    EquipWidget(peer);
}

void BButton::SetMnemonic(char letter)
{
    fMnemonic = letter;
    if (Peer())
        display::Call([this] { ShowLabel(*Peer()); });
}

void BButton::ShowLabel(ViewPeer& peer)
{
    QString text = PlainLabel(Label());
    const qsizetype place = text.indexOf(QLatin1Char(fMnemonic), 0, Qt::CaseInsensitive);
    if (place >= 0)
        text.insert(place, '&');
    static_cast<QPushButton*>(peer.widget)->setText(text);
}

void BButton::WidgetChanged(BMessage* report)
{
    // The message tells of the pressed button; then it springs back, as the widget has done.
    BControl::WidgetChanged(report);
    SetValue(B_CONTROL_OFF);
}
