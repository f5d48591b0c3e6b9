// A menu that opens where it is asked for rather than from a bar: the choices of a BMenuField.
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
};
