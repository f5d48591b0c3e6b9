#include "Menu.h"

#include "Message.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/MenuPeer.h"
#include "server/ServerMessages.h"
#include "Window.h"

#include <algorithm>
#include <cstring>
#include <QMenu>
#include <QMenuBar>

BMenu::BMenu(const char* name) : BMenu(BRect(), name, B_FOLLOW_NONE, 0) { }

BMenu::BMenu(BRect frame, const char* name, uint32 resizeMode, uint32 flags)
    : BView(frame, name, resizeMode, flags)
{
}

BMenu::~BMenu()
{
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

status_t BMenu::SetTargetForItems(BHandler* target)
{
    for (auto& item : fItems) {
        const status_t status = item->SetTarget(target);
        if (status != B_OK)
            return status;
    }
    return B_OK;
}

// --- State

void BMenu::SetRadioMode(bool on)
{
    fRadio = on;
    for (auto& item : fItems)
        item->ShowState();
}

void BMenu::SetLabelFromMarked(bool on)
{
    fLabelFromMarked = on;
    if (fMenuPeer)
        display::Call([this] { ShowField(); });
}

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
