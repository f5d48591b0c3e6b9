#include "Box.h"

#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/ViewPeer.h"

#include <QGroupBox>
#include <QStyleOptionGroupBox>
#include <QStylePainter>

namespace {

class BoxWidget : public QGroupBox {
public:
    BoxWidget(border_style border, QWidget* parent) : QGroupBox(parent), fBorder(border) { }

protected:
    void paintEvent(QPaintEvent*) override
    {
        // A QGroupBox always has a frame: the style is told for this painting.
        QStyleOptionGroupBox option;
        initStyleOption(&option);
        if (fBorder == B_NO_BORDER)
            option.subControls &= ~QStyle::SC_GroupBoxFrame;
        QStylePainter(this).drawComplexControl(QStyle::CC_GroupBox, option);
    }

private:
    const border_style fBorder;
};

} // namespace

BBox::BBox(BRect frame, const char* name, uint32 resizeMode, uint32 flags, border_style border)
    : BView(frame, name, resizeMode, flags), fBorder(border)
{
    BView::SetViewColor(B_TRANSPARENT_COLOR);
}

void BBox::AttachedToWindow()
{
    TakeParentsColor();
}

void BBox::SetLabel(const char* label)
{
    fLabel = label ? label : "";
    if (Peer()) {
        display::Call(
            [this] { static_cast<QGroupBox*>(Peer()->widget)->setTitle(PlainLabel(Label())); });
    }
}

void BBox::MakeWidget(ViewPeer& peer)
{
    auto* box = new BoxWidget(fBorder, peer.parent);
    box->setTitle(PlainLabel(Label()));
    peer.widget = box;
    // A view to the input: clicks between the views in it go to the program.
    Equip(peer, Name(), ViewEvents::Kind::kView);
}
