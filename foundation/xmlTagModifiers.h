// The attributes of a tag: a message with one string field for each, named as the attribute is.
#pragma once

#include <Message.h>

class xmlTagModifiers : public BMessage {
public:
    // Takes away all attributes.
    void Clear() { MakeEmpty(); }
};
