// One line of a menu: a label, a message it sends, and perhaps a shortcut or a further menu.
#pragma once

#include "InterfaceDefs.h"
#include "Invoker.h"

#include <memory>
#include <string>

class BMenu;
class BWindow;

class BMenuItem : public BInvoker {
public:
    // Owns message (may be null). With shortcut, the command key (Ctrl) and modifiers choose the
    // item without opening the menu; the menu shows them.
    BMenuItem(const char* label, BMessage* message, char shortcut = 0, uint32 modifiers = 0);
    // Opens menu, which it owns; the label is the menu's name.
    explicit BMenuItem(BMenu* menu, BMessage* message = nullptr);
    ~BMenuItem() override; // takes itself out of its menu

    virtual void SetLabel(const char* label); // null is an empty one
    const char* Label() const { return fLabel.c_str(); }
    virtual void SetEnabled(bool enabled); // disabled: grey, and neither mouse nor shortcut work
    bool IsEnabled() const; // false too in a disabled menu
    virtual void SetMarked(bool marked); // in a radio menu the others lose the mark
    bool IsMarked() const { return fMarked; }
    virtual void SetShortcut(char shortcut, uint32 modifiers);
    BMenu* Submenu() const { return fSubmenu.get(); }
    BMenu* Menu() const { return fMenu; } // that it stands in, or null

    // Sends a copy of message, or of the item's own one, to the target, by default the menu's
    // window, with "when" (int64), "source" (pointer, this) and "index" (int32) added.
    status_t Invoke(BMessage* message = nullptr) override;

private:
    friend class BMenu;
    friend class BMenuBar;
    friend class BSeparatorItem;
    friend class BWindow;

    void Chosen(); // by the user: marks in a radio menu and invokes
    void ShowState();

    std::string fLabel;
    std::unique_ptr<BMenu> fSubmenu;
    BMenu* fMenu = nullptr;
    int32 fId; // names the item in the server's messages; never used again
    char fShortcut = 0;
    uint32 fModifiers = 0;
    bool fEnabled = true;
    bool fMarked = false;
    bool fSeparator = false;
};

// A line between items; never enabled.
class BSeparatorItem : public BMenuItem {
public:
    BSeparatorItem();
    void SetEnabled(bool enabled) override;
};
