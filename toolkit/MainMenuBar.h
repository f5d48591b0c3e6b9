// The menu bar of a main window.
#pragma once

#include <MenuBar.h>

class BMenu;

// A menu bar whose first menu is the application's own: what is about the program and not about its
// work.
class MainMenuBar : public BMenuBar {
public:
    // Fills the application's menu with "About", "Help...", "System..." and "Quit", sent to be_app.
    MainMenuBar(BRect frame, const char* applicationName);

    BMenu* ApplicationMenu() const { return applicationMenu; }

private:
    BMenu* applicationMenu;
};
