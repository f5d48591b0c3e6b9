#include "Menu.h"

#include "MenuBar.h"
#include "Message.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/ViewPeer.h"
#include "server/ViewWidget.h"
#include "server/WindowWidget.h"
#include "Window.h"

#include <QMenu>
#include <QMenuBar>
#include <QPushButton>

#include <algorithm>
#include <cstring>

BMenu::BMenu(const char* name) : BMenu(BRect(), name, B_FOLLOW_NONE, 0) { }

BMenu::BMenu(BRect frame, const char* name, uint32 resizeMode, uint32 flags)
    : BView(frame, name, resizeMode, flags)
{
}

BMenu::~BMenu()
{
    // An item takes itself out of its menu when it ends: here that would change a dying list.
    for (auto& item : fItems)
        item->fMenu = nullptr;
}

// --- Items

bool BMenu::AddItem(BMenuItem* item)
{
    return AddItem(item, CountItems());
}

bool BMenu::AddItem(BMenuItem* item, int32 index)
{
    if (!item || item->fMenu || index < 0 || index > CountItems())
        return false;
    fItems.insert(fItems.begin() + index, std::unique_ptr<BMenuItem>(item));
    item->fMenu = this;
    if (fMenuWindow) {
        ItemAttached(*item);
        Rebuild();
    }
    return true;
}

bool BMenu::AddItem(BMenu* menu)
{
    return AddItem(menu, CountItems());
}

bool BMenu::AddItem(BMenu* menu, int32 index)
{
    // Looked at first: the item made for it owns the menu, and refused it would be nobody's.
    if (!menu || menu->fSuperitem || index < 0 || index > CountItems())
        return false;
    return AddItem(new BMenuItem(menu), index);
}

bool BMenu::RemoveItem(BMenuItem* item)
{
    return RemoveItem(IndexOf(item)) != nullptr;
}

BMenuItem* BMenu::RemoveItem(int32 index)
{
    if (!ItemAt(index))
        return nullptr;
    BMenuItem* item = fItems[static_cast<size_t>(index)].release();
    fItems.erase(fItems.begin() + index);
    if (fMenuWindow) {
        ItemDetached(*item);
        Rebuild();
    }
    item->fMenu = nullptr;
    return item;
}

BMenuItem* BMenu::ItemAt(int32 index) const
{
    return index >= 0 && index < CountItems() ? fItems[static_cast<size_t>(index)].get() : nullptr;
}

int32 BMenu::IndexOf(BMenuItem* item) const
{
    const auto found = std::find_if(
        fItems.begin(), fItems.end(), [item](const auto& own) { return own.get() == item; });
    return found == fItems.end() ? B_ERROR : static_cast<int32>(found - fItems.begin());
}

BMenuItem* BMenu::Find(const std::function<bool(const BMenuItem&)>& wanted) const
{
    for (const auto& item : fItems) {
        if (wanted(*item))
            return item.get();
        BMenuItem* below = item->Submenu() ? item->Submenu()->Find(wanted) : nullptr;
        if (below)
            return below;
    }
    return nullptr;
}

BMenuItem* BMenu::FindItem(const char* label) const
{
    return Find([label](const BMenuItem& item) { return label && item.fLabel == label; });
}

BMenuItem* BMenu::FindMarked() const
{
    for (const auto& item : fItems) {
        if (item->fMarked)
            return item.get();
    }
    return nullptr;
}

// --- State

void BMenu::SetEnabled(bool enabled)
{
    fEnabled = enabled;
    if (fSuperitem)
        fSuperitem->ShowState();
    for (auto& item : fItems)
        item->ShowState();
}

bool BMenu::IsEnabled() const
{
    const BMenu* above = Supermenu();
    return fEnabled && (!above || (fSuperitem->fEnabled && above->IsEnabled()));
}

BMenu* BMenu::Supermenu() const
{
    return fSuperitem ? fSuperitem->Menu() : nullptr;
}

// --- On the display server

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

// Shows the keys of its item, which are the window's. Once the menu bar has the keyboard Qt takes
// them for both of them, and tells each of the two in turn.
class ItemAction : public QAction {
public:
    using QAction::QAction;

protected:
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::Shortcut)
            return QAction::event(event);
        activate(Trigger);
        return true;
    }
};

} // namespace

// --- Into the window and out of it

void BMenu::MenuAttached(BWindow* window)
{
    fMenuWindow = window;
    // A bar is a view of the window already. Menus below are handlers only, to get their reports.
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

// Fills fMenuPeer->widget anew; on the server. All items at once, since an item's mnemonic depends
// on those before it.
void BMenu::FillWidget()
{
    QWidget* widget = fMenuPeer->widget;
    for (const auto& [id, action] : fMenuPeer->actions) {
        // It belongs to the widget and not to the action, so it would stay.
        if (action->menu())
            delete action->menu();
        delete action;
    }
    fMenuPeer->actions.clear();
    QString used;
    for (const auto& item : fItems) {
        auto* action = new ItemAction(WithMnemonic(item->Label(), used), widget);
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
    QAction* action = fMenuPeer->actions.at(item.fId);
    // The text has the mark of the mnemonic in it; the label itself is kept as the name. A new one
    // may share its mnemonic with another item: Qt then steps from one to the other.
    if (action->objectName() != QString::fromUtf8(item.Label())) {
        QString used;
        action->setText(WithMnemonic(item.Label(), used));
        action->setObjectName(QString::fromUtf8(item.Label()));
    }
    const auto key = static_cast<uint8>(item.fShortcut);
    action->setShortcut(key == 0 ? QKeySequence() : ShortcutKeys(key, item.fModifiers));
    action->setShortcutContext(Qt::WidgetShortcut); // shown: the window has the bound one
    action->setEnabled(item.IsEnabled());
    // Unmarked it is not even checkable: Qt would show an empty box.
    action->setCheckable(item.fMarked);
    action->setChecked(item.fMarked);
    action->setProperty("marked", item.fMarked);
    ShowField();
}

// By number: the item may have been removed or disabled since the click.
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
    // As wide as what is around it and as high as the desktop's font needs, whatever its frame.
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
