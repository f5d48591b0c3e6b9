// A list of items that opens from a menu bar or from an item of another menu. A menu is in a window
// when its bar is; then it is called with the window's lock, as a view.
#pragma once

#include "InterfaceDefs.h"
#include "MenuItem.h"
#include "View.h"

#include <functional>

struct MenuPeer;

class BMenu : public BView {
public:
    explicit BMenu(const char* name); // also its label in a menu bar
    ~BMenu() override; // deletes the items

    // Items and menus belong to the menu once added. index: where; beyond the end is refused.
    bool AddItem(BMenuItem* item);
    bool AddItem(BMenuItem* item, int32 index);
    bool AddItem(BMenu* menu); // with an item of its own, labelled with the menu's name
    bool AddItem(BMenu* menu, int32 index);
    bool RemoveItem(BMenuItem* item); // false if it is not in here; true: it is the caller's
    BMenuItem* RemoveItem(int32 index); // null beyond the last

    BMenuItem* ItemAt(int32 index) const; // null beyond the last
    int32 CountItems() const { return static_cast<int32>(fItems.size()); }
    int32 IndexOf(BMenuItem* item) const; // B_ERROR if it is not in here
    BMenuItem* FindItem(const char* label) const; // in submenus too; null if there is none
    BMenuItem* FindMarked() const; // the first one

    void SetRadioMode(bool on) { fRadio = on; } // choosing an item marks it and unmarks the others
    bool IsRadioMode() const { return fRadio; }
    // Before it is in a window: the field it opens from shows the marked item's label.
    void SetLabelFromMarked(bool on) { fLabelFromMarked = on; }
    virtual void SetEnabled(bool enabled);
    bool IsEnabled() const; // false too in a disabled menu above
    BMenu* Supermenu() const;
    BMenuItem* Superitem() const { return fSuperitem; }

protected:
    BMenu(BRect frame, const char* name, uint32 resizeMode, uint32 flags);
    void WidgetChanged(BMessage* report) override;

private:
    friend class BMenuBar;
    friend class BMenuField;
    friend class BMenuItem;
    friend class BPopUpMenu;
    friend class BTextControl;

    BMenuItem* Find(const std::function<bool(const BMenuItem&)>& wanted) const;
    // Into a window and out of it, with all menus below: handlers, shortcuts, targets.
    void MenuAttached(BWindow* window);
    void MenuDetached();
    void ItemAttached(BMenuItem& item);
    void ItemDetached(BMenuItem& item);
    void Rebuild(); // the widget's items
    void FillWidget();
    void ShowItem(const BMenuItem& item);
    void ShowItemIn(const BMenuItem& item);
    void ShowField();

    std::vector<std::unique_ptr<BMenuItem>> fItems;
    BMenuItem* fSuperitem = nullptr;
    BWindow* fMenuWindow = nullptr; // of the bar above
    std::unique_ptr<MenuPeer> fMenuPeer; // while in a window
    bool fRadio = false;
    bool fLabelFromMarked = false;
    bool fEnabled = true;
};
