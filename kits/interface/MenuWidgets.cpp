// A menu's part on the display server.
#include "Menu.h"
#include "MenuBar.h"
#include "Message.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/MenuPeer.h"
#include "server/ServerMessages.h"
#include "server/ViewEvents.h"
#include "server/ViewWidget.h"
#include "server/WindowWidget.h"
#include "Window.h"

#include <QMenu>
#include <QMenuBar>

namespace {

// The label with an "&" before the first letter that no other item of the menu has as its mnemonic.
QString WithMnemonic(const char* label, QString& used)
{
    QString text = PlainLabel(label);
    for (qsizetype i = 0; i < text.size(); i++) {
        const QChar letter = text[i].toLower();
        if (!letter.isLetterOrNumber() || used.contains(letter))
            continue;
        used += letter;
        return text.insert(i, '&');
    }
    return text;
}

} // namespace

// --- Into the window and out of it

void BMenu::MenuAttached(BWindow* window)
{
    fMenuWindow = window;
    if (!Looper())
        window->AddHandler(this);
    fMenuPeer = std::make_unique<MenuPeer>();
    fMenuPeer->link = std::make_shared<ViewLink>(window->fPeer->link, BMessenger(this, window), 0);
    for (auto& item : fItems)
        ItemAttached(*item);
}

void BMenu::ItemAttached(BMenuItem& item)
{
    if (!item.Messenger().IsValid())
        item.SetTarget(fMenuWindow);
    fMenuWindow->AddMenuShortcut(&item);
    if (item.fSubmenu)
        item.fSubmenu->MenuAttached(fMenuWindow);
}

void BMenu::MenuDetached()
{
    for (auto& item : fItems)
        ItemDetached(*item);
    if (!Window())
        fMenuWindow->RemoveHandler(this);
    fMenuPeer.reset();
    fMenuWindow = nullptr;
}

void BMenu::ItemDetached(BMenuItem& item)
{
    fMenuWindow->RemoveMenuShortcut(&item);
    if (item.fSubmenu)
        item.fSubmenu->MenuDetached();
}

// --- Widgets

// Fills fMenuPeer->widget anew; on the server.
void BMenu::FillWidget()
{
    QWidget* widget = fMenuPeer->widget;
    for (const auto& [id, action] : fMenuPeer->actions) {
        if (action->menu())
            delete action->menu();
        delete action;
    }
    fMenuPeer->actions.clear();
    QString used;
    for (const auto& item : fItems) {
        auto* action = new QAction(WithMnemonic(item->Label(), used), widget);
        action->setObjectName(QString::fromUtf8(item->Label()));
        action->setSeparator(item->fSeparator);
        QObject::connect(
            action, &QAction::triggered, action, [link = fMenuPeer->link, id = item->fId, action] {
                action->setChecked(action->property("marked").toBool()); // the program marks
                BMessage report(kMsgWidgetChanged);
                report.AddInt32("item", id);
                link->Post(report);
            });
        fMenuPeer->actions[item->fId] = action;
        if (BMenu* submenu = item->Submenu()) {
            auto* menu = new QMenu(widget);
            action->setMenu(menu);
            submenu->fMenuPeer->widget = menu;
            submenu->fMenuPeer->actions.clear();
            submenu->FillWidget();
        }
        widget->addAction(action);
        ShowItemIn(*item);
    }
    ShowField();
}

// The field's button shows the choice, or else the menu's name.
void BMenu::ShowField()
{
    if (!fMenuPeer->field)
        return;
    const BMenuItem* marked = fLabelFromMarked ? FindMarked() : nullptr;
    fMenuPeer->field->setText(PlainLabel(marked ? marked->Label() : Name()));
}

void BMenu::Rebuild()
{
    display::Call([this] { FillWidget(); });
}

void BMenu::ShowItem(const BMenuItem& item)
{
    if (fMenuPeer)
        display::Call([this, &item] { ShowItemIn(item); });
}

void BMenu::ShowItemIn(const BMenuItem& item)
{
    const auto found = fMenuPeer->actions.find(item.fId);
    if (found == fMenuPeer->actions.end())
        return;
    QAction* action = found->second;
    if (action->objectName() != QString::fromUtf8(item.Label())) {
        QString used;
        action->setText(WithMnemonic(item.Label(), used));
        action->setObjectName(QString::fromUtf8(item.Label()));
    }
    if (item.fShortcut != 0) {
        action->setShortcut(ShortcutKeys(static_cast<uint8>(item.fShortcut), item.fModifiers));
        action->setShortcutContext(Qt::WidgetShortcut); // shown: the window has the bound one
    }
    action->setEnabled(item.IsEnabled());
    action->setCheckable(item.fMarked);
    action->setChecked(item.fMarked);
    action->setProperty("marked", item.fMarked);
    ShowField();
}

void BMenu::WidgetChanged(BMessage* report)
{
    int32 id = 0;
    report->FindInt32("item", &id);
    for (auto& item : fItems) {
        if (item->fId != id)
            continue;
        if (item->IsEnabled())
            item->Chosen();
        return;
    }
}

// --- Menu bar

BMenuBar::BMenuBar(BRect frame, const char* name, uint32 resizeMode, uint32 flags)
    : BMenu(frame, name, resizeMode, flags)
{
    BView::SetViewColor(B_TRANSPARENT_COLOR);
}

// While it still is a BMenuBar: its items' shortcuts must leave the window.
BMenuBar::~BMenuBar()
{
    RemoveSelf();
}

void BMenuBar::AttachedToWindow()
{
    MenuAttached(Window());
    display::Call([this] {
        fMenuPeer->widget = Peer()->widget;
        FillWidget();
    });
    float height = 0;
    GetPreferredSize(nullptr, &height);
    const BRect around = Parent() ? Parent()->Bounds() : Window()->Bounds();
    ResizeTo(around.right - Frame().left, height);
    if (!Window()->KeyMenuBar())
        Window()->SetKeyMenuBar(this);
}

void BMenuBar::DetachedFromWindow()
{
    if (Window()->KeyMenuBar() == this)
        Window()->SetKeyMenuBar(nullptr);
    MenuDetached();
}

void BMenuBar::GetPreferredSize(float* width, float* height)
{
    GetWidgetSize(width, height);
}

void BMenuBar::MakeWidget(ViewPeer& peer)
{
    auto* bar = new QMenuBar(peer.parent);
    UseDesktopColors(*bar);
    peer.widget = bar;
    Equip(peer, Name(), ViewEvents::Kind::kControl);
}
