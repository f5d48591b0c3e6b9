#include "toolkit/LibMenuButton.h"

#include <Message.h>
#include <PopUpMenu.h>

LibMenuButton::LibMenuButton(BRect frame, const char* name, const char* label, uint32 resizeMode)
    : BMenuField(frame, name, label, new BPopUpMenu(""), resizeMode)
{
    SetDivider(be_plain_font->StringWidth(label) + 10);
}

void LibMenuButton::AddItem(const char* text, BMessage* message)
{
    BMenuItem* item = new BMenuItem(text, message);
    // The field shows the marked item, and nothing where none is.
    item->SetMarked(Menu()->CountItems() == 0);
    Menu()->AddItem(item);
}

void LibMenuButton::MakeEmpty()
{
    // A removed item is the caller's. The cast tells the index 0 from a null item.
    while (BMenuItem* item = Menu()->RemoveItem(static_cast<int32>(0)))
        delete item;
}

bool LibMenuButton::Choose(const char* text)
{
    BMenuItem* item = Menu()->FindItem(text);
    if (item)
        item->SetMarked(true);
    return item;
}

const char* LibMenuButton::Text() const
{
    const BMenuItem* item = Menu()->FindMarked();
    return item ? item->Label() : "";
}
