#include "CheckBox.h"

#include "Message.h"
#include "server/Convert.h"
#include "server/ViewPeer.h"

#include <QCheckBox>

namespace {

// The whole view can be clicked, not only box and label.
class CheckBoxWidget : public QCheckBox {
public:
    using QCheckBox::QCheckBox;

protected:
    bool hitButton(const QPoint& where) const override { return rect().contains(where); }
};

} // namespace

BCheckBox::BCheckBox(BRect frame, const char* name, const char* label, BMessage* message,
    uint32 resizeMode, uint32 flags)
    : BControl(frame, name, label, message, resizeMode, flags)
{
}

void BCheckBox::MakeWidget(ViewPeer& peer)
{
    auto* box = new CheckBoxWidget(peer.parent);
    // Not clicked(), which does not come when assistive technology sets the box.
    QObject::connect(box, &QCheckBox::toggled, box, [link = peer.link](bool checked) {
        BMessage report(kMsgWidgetChanged);
        report.AddInt32("be:value", checked ? B_CONTROL_ON : B_CONTROL_OFF);
        link->Post(report);
    });
    peer.widget = box;
    EquipWidget(peer);
}

void BCheckBox::ShowLabel(ViewPeer& peer)
{
    static_cast<QCheckBox*>(peer.widget)->setText(PlainLabel(Label()));
}

void BCheckBox::ShowValue(ViewPeer& peer, int32 value)
{
    const QSignalBlocker quiet(peer.widget); // assistive technology toggles it without a click
    static_cast<QCheckBox*>(peer.widget)->setChecked(value != B_CONTROL_OFF);
}
