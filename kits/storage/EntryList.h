// What can be asked for one entry after the other.
#pragma once

#include "SupportDefs.h"

class BEntry;
struct entry_ref;

class BEntryList {
public:
    virtual ~BEntryList() = default;

    // The next entry, in no order; with traverse what a link points to. B_ENTRY_NOT_FOUND at the
    // end, and *entry is then without one. "." and ".." are left out.
    virtual status_t GetNextEntry(BEntry* entry, bool traverse = false) = 0;
    virtual status_t GetNextRef(entry_ref* ref) = 0;
    virtual status_t Rewind() = 0; // to the first
    // All of them; moves nothing. Negative: an error.
    virtual int32 CountEntries() = 0;
};
