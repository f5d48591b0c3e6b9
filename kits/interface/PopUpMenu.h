// A menu that opens where it is asked for rather than from a bar: the choices of a BMenuField, or
// what can be done with a part of a window.
#pragma once

#include "Menu.h"

class BPopUpMenu : public BMenu {
public:
    // In radio mode the item chosen last is marked; labelFromMarked: the field shows that one,
    // otherwise the name.
    explicit BPopUpMenu(const char* name, bool radioMode = true, bool labelFromMarked = true)
        : BMenu(name)
    {
        SetRadioMode(radioMode);
        SetLabelFromMarked(labelFromMarked);
    }
    ~BPopUpMenu() override;

    // For a menu that no field owns. Makes it the window's: its items' shortcuts work from here on,
    // and what is chosen sends its message to the window unless it has another target. Until the
    // window goes, or Leave(). With the window locked, as all that follows.
    void Join(BWindow* window);
    void Leave();
    // Beside the platform's Go(): opens it with its left top, or another corner where the screen
    // ends, at a point of the screen, and waits for nothing.
    void Open(BPoint where);
};
