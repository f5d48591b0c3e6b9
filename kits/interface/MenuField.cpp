#include "MenuField.h"

#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/ViewPeer.h"
#include "server/ViewWidget.h"
#include "Window.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTimer>

#include <cmath>

namespace {

class FieldWidget : public QWidget {
public:
    explicit FieldWidget(QWidget* parent)
        : QWidget(parent), label(new QLabel(this)), button(new QPushButton(this)),
          menu(new QMenu(button))
    {
        auto* row = new QHBoxLayout(this);
        row->setContentsMargins(0, 0, 0, 0);
        row->setSpacing(0);
        row->addWidget(label);
        row->addWidget(button, 1);
        button->setMenu(menu);
        // Screen readers call the button by its label; the keyboard is the button's alone.
        label->setBuddy(button);
        setFocusProxy(button);
        // Once it is there the arrow keys go on from the present choice.
        connect(menu, &QMenu::aboutToShow, this,
            [this] { QTimer::singleShot(0, menu, [this] { ActivateChoice(); }); });
    }

    QLabel* const label;
    QPushButton* const button;
    QMenu* const menu;

private:
    void ActivateChoice()
    {
        for (QAction* action : menu->actions()) {
            if (action->isChecked())
                menu->setActiveAction(action);
        }
    }
};

FieldWidget& FieldOf(const ViewPeer& peer)
{
    return *static_cast<FieldWidget*>(peer.widget);
}

} // namespace

BMenuField::BMenuField(
    BRect frame, const char* name, const char* label, BMenu* menu, uint32 resizeMode, uint32 flags)
    : BView(frame, name, resizeMode, flags), fMenu(menu), fLabel(label ? label : ""),
      fDivider(fLabel.empty() ? 0 : std::floor(frame.Width() / 2))
{
    BView::SetViewColor(B_TRANSPARENT_COLOR);
}

// While it still is one: the items' shortcuts must leave the window.
BMenuField::~BMenuField()
{
    RemoveSelf();
}

void BMenuField::SetLabel(const char* label)
{
    fLabel = label ? label : "";
    ShowState();
}

void BMenuField::SetEnabled(bool enabled)
{
    fEnabled = enabled;
    ShowState();
}

void BMenuField::SetDivider(float divider)
{
    fDivider = divider;
    ShowState();
}

void BMenuField::AttachedToWindow()
{
    if (Parent())
        SetViewColor(Parent()->ViewColor());
    // First the menus' peers, down to the last submenu: FillWidget() needs them all.
    fMenu->MenuAttached(Window());
    display::Call([this] {
        fMenu->fMenuPeer->widget = FieldOf(*Peer()).menu;
        fMenu->fMenuPeer->field = FieldOf(*Peer()).button;
        fMenu->FillWidget();
    });
}

void BMenuField::DetachedFromWindow()
{
    fMenu->MenuDetached();
}

void BMenuField::GetPreferredSize(float* width, float* height)
{
    GetWidgetSize(width, height);
}

void BMenuField::MakeWidget(ViewPeer& peer)
{
    auto* field = new FieldWidget(peer.parent);
    // Both inherit the palette of the field, which has the view's colour.
    UseDesktopColors(*field->button);
    UseDesktopColors(*field->menu);
    peer.widget = field;
    Equip(peer, Name(), ViewEvents::Kind::kControl);
    if (!(Flags() & B_NAVIGABLE))
        field->button->setFocusPolicy(Qt::NoFocus);
    // The button has the keyboard in its place, and its focus is reported as the view's.
    new ViewEvents(peer.link, ViewEvents::Kind::kControl, field->button);
    ShowStateIn(peer);
}

void BMenuField::ShowState()
{
    if (Peer())
        display::Call([this] { ShowStateIn(*Peer()); });
}

void BMenuField::ShowStateIn(ViewPeer& peer)
{
    FieldWidget& field = FieldOf(peer);
    field.label->setText(PlainLabel(Label())); // with a buddy it takes marks of mnemonics
    field.label->setFixedWidth(static_cast<int>(fDivider));
    field.setEnabled(fEnabled);
}
