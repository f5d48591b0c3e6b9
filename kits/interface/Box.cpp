#include "Box.h"

#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/ViewPeer.h"

#include <QGroupBox>

BBox::BBox(BRect frame, const char* name, uint32 resizeMode, uint32 flags)
    : BView(frame, name, resizeMode, flags)
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
    auto* box = new QGroupBox(peer.parent);
    box->setTitle(PlainLabel(Label()));
    peer.widget = box;
    // A view to the input: clicks between the views in it go to the program.
    Equip(peer, Name(), ViewEvents::Kind::kView);
}
