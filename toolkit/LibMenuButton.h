// A button that shows one choice out of a menu.
#pragma once

#include <MenuField.h>

class BMessage;

class LibMenuButton : public BMenuField {
public:
    LibMenuButton(BRect frame, const char* name, const char* label,
        uint32 resizeMode = B_FOLLOW_LEFT | B_FOLLOW_TOP);

    // Appends a choice that sends message, owned from here on; null sends nothing. The first one
    // is chosen.
    void AddItem(const char* text, BMessage* message);
    void MakeEmpty();
    // Makes the choice of that text the one shown, without its message; false if there is none.
    bool Choose(const char* text);
    // What is shown; "" without choices. Valid until the choices change.
    const char* Text() const;
};
