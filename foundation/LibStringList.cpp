#include "foundation/LibStringList.h"

#include <Message.h>

#include <memory>

bool LibStringList::Add(const char* s)
{
    return s && Insert(std::make_unique<LibString>(s));
}

bool LibStringList::InList(const char* s)
{
    LibString probe(s);
    return s && InList(&probe);
}

LibString* LibStringList::Find(const char* s, const bool& ignoreCase, const int& bytes)
{
    for (LibString* entry = First(); entry; entry = Next()) {
        if (entry->CompareSub(s, ignoreCase, bytes, 0) == 0)
            return entry;
    }
    return nullptr;
}

bool LibStringList::Remove(const LibString& s)
{
    LibString probe(s);
    return Remove(&probe, false);
}

bool LibStringList::Remove(const char* s)
{
    return Remove(LibString(s));
}

void LibStringList::GetFrom(BMessage& message, const char* name)
{
    for (const LibString& entry : *this)
        message.AddString(name, entry);
}

void LibStringList::SetTo(const BMessage& message, const char* name)
{
    // A message that has no such field says nothing about the list: it is not emptied.
    if (!message.HasString(name, 0))
        return;
    const LibString field(name); // name may be one of the entries
    Clear();
    Append(message, field);
}

void LibStringList::Append(const BMessage& message, const char* name)
{
    const char* text = nullptr;
    for (int32 i = 0; message.FindString(name, i, &text) == B_OK; i++)
        Add(text);
}

void LibStringList::PrintToStream()
{
    for (const LibString& entry : *this)
        entry.PrintToStream();
}
