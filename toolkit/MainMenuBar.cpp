#include "toolkit/MainMenuBar.h"

#include "foundation/LibString.h"

#include <Application.h>
#include <Menu.h>
#include <MenuItem.h>
#include <Message.h>

MainMenuBar::MainMenuBar(BRect frame, const char* applicationName)
    : BMenuBar(frame, "menubar"), applicationMenu(new BMenu(applicationName))
{
    LibString about;
    about.Formatted("About %s...", applicationName);
    const struct {
        const char* label;
        uint32 what;
        char shortcut;
    } items[] = {
        { about, 'sabt', 0 },
        // Not 'help', which asks about the control with the keyboard.
        { "Help...", 'Help', 0 },
        { "System...", 'ssys', 0 },
        { nullptr, 0, 0 },
        { "Quit", B_QUIT_REQUESTED, 'Q' },
    };
    for (const auto& row : items) {
        BMenuItem* item = row.label ? new BMenuItem(row.label, new BMessage(row.what), row.shortcut)
                                    : new BSeparatorItem;
        // Else the window would get it, as an item's message goes to the menu's window.
        item->SetTarget(be_app);
        applicationMenu->AddItem(item);
    }
    AddItem(applicationMenu);
}
