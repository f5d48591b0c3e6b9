// A list of texts that it owns, in the order in which they were added. All comparisons but Find are
// case-sensitive.
#pragma once

#include "foundation/LibString.h"
#include "foundation/LinkList.h"

class BMessage;

class LibStringList : public LinkList<LibString> {
public:
    using LinkList<LibString>::InList;
    using LinkList<LibString>::Remove;

    // Appends a copy of s. False, and nothing added, if s is null.
    bool Add(const char* s);
    // True, and the cursor on it, if there is an entry equal to s.
    bool InList(const char* s);
    // The first entry that equals s in that many bytes (-1: as a whole), with the cursor on
    // it; null if there is none.
    LibString* Find(const char* s, const bool& ignoreCase = false, const int& bytes = -1);
    // Deletes the first entry equal to s. False if there is none.
    bool Remove(const LibString& s);
    bool Remove(const char* s);

    // Adds every entry to the strings that message has under name.
    void GetFrom(BMessage& message, const char* name);
    // Replaces the entries by the strings that message has under name; without any, nothing
    // changes.
    void SetTo(const BMessage& message, const char* name);
    // Adds the strings that message has under name.
    void Append(const BMessage& message, const char* name);

    // Every entry as LibString prints it, on standard error.
    void PrintToStream();
};
