// A combination of keys that a window knows: of a menu item, or with a message of its own.
#pragma once

#include "InterfaceDefs.h"
#include "Message.h"

#include <memory>

class BMenuItem;

struct WindowShortcut {
    uint32 key = 0; // lower case
    uint32 modifiers = 0; // beside the command key
    BMenuItem* item = nullptr; // chosen if there is one; else the message is sent
    std::unique_ptr<BMessage> message;
    BMessenger target; // without one: the view in focus
};
