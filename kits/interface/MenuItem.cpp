#include "MenuItem.h"

#include "Menu.h"
#include "Message.h"
#include "server/DisplayServer.h"
#include "Window.h"

#include <atomic>

namespace {

int32 NextItemId()
{
    static std::atomic<int32> sLast = 0;
    return ++sLast;
}

} // namespace

BMenuItem::BMenuItem(const char* label, BMessage* message, char shortcut, uint32 modifiers)
    : BInvoker(message, BMessenger()), fLabel(label ? label : ""), fId(NextItemId()),
      fShortcut(shortcut), fModifiers(modifiers)
{
}

BMenuItem::BMenuItem(BMenu* menu, BMessage* message)
    : BInvoker(message, BMessenger()), fLabel(menu->Name() ? menu->Name() : ""), fSubmenu(menu),
      fId(NextItemId())
{
    menu->fSuperitem = this;
}

BMenuItem::~BMenuItem()
{
    if (fMenu)
        fMenu->RemoveItem(this);
}

void BMenuItem::SetLabel(const char* label)
{
    fLabel = label ? label : "";
    ShowState();
}

void BMenuItem::SetEnabled(bool enabled)
{
    fEnabled = enabled;
    ShowState();
}

bool BMenuItem::IsEnabled() const
{
    // Of the submenu only its own state: its IsEnabled() would ask this item again.
    return fEnabled && (!fMenu || fMenu->IsEnabled()) && (!fSubmenu || fSubmenu->fEnabled);
}

void BMenuItem::SetMarked(bool marked)
{
    fMarked = marked;
    ShowState();
    if (!marked || !fMenu || !fMenu->IsRadioMode())
        return;
    for (int32 i = 0; i < fMenu->CountItems(); i++) {
        BMenuItem* other = fMenu->ItemAt(i);
        if (other != this && other->fMarked)
            other->SetMarked(false);
    }
}

void BMenuItem::SetShortcut(char shortcut, uint32 modifiers)
{
    BWindow* window = fMenu ? fMenu->fMenuWindow : nullptr;
    // Before the change: the window finds it by its old keys.
    if (window)
        window->RemoveMenuShortcut(this);
    fShortcut = shortcut;
    fModifiers = modifiers;
    if (window)
        window->AddMenuShortcut(this);
    ShowState();
}

void BMenuItem::ShowState()
{
    if (fMenu)
        fMenu->ShowItem(*this);
}

// The mark follows what the user does. A program's own Invoke() only sends the message.
void BMenuItem::Chosen()
{
    if (fMenu->IsRadioMode())
        SetMarked(true);
    Invoke();
}

status_t BMenuItem::Invoke(BMessage* message)
{
    return InvokeFrom(this, "index", fMenu ? fMenu->IndexOf(this) : -1, message);
}

BSeparatorItem::BSeparatorItem() : BMenuItem("", nullptr)
{
    fSeparator = true;
    fEnabled = false;
}

// A line has nothing to choose: it stays disabled, whoever enables all of a menu's items.
void BSeparatorItem::SetEnabled(bool) { }
