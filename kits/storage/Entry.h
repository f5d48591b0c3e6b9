// Where a file is, without it being open: its directory and its name in there.
#pragma once

#include <string>

#include "SupportDefs.h"

struct entry_ref {
    entry_ref() = default;
    // An entry of a directory that is known by its number only; PathOfRef() knows none for it.
    entry_ref(dev_t directoryDevice, ino_t directoryNode, const char* leafName);
    entry_ref(const entry_ref& ref);
    entry_ref& operator=(const entry_ref& ref);
    ~entry_ref();

    // Copies the name; NULL for none. B_OK, B_NO_MEMORY.
    status_t set_name(const char* leafName);
    bool operator==(const entry_ref& ref) const; // same directory, same name

    dev_t device = -1;
    ino_t directory = 0;
    char* name = nullptr; // owned, see set_name()

    // The directory's absolute path: no call of Linux finds one by its number. Empty if not known.
    std::string directoryPath;
};

// The reference of a file by its path, absolute or relative to the working directory. The directory
// must exist, the file need not. B_BAD_VALUE: path is NULL or empty; B_ENTRY_NOT_FOUND: there is no
// such directory; *ref is then as it was.
status_t get_ref_for_path(const char* path, entry_ref* ref);
// The file's absolute path; empty if it is not known.
std::string PathOfRef(const entry_ref& ref);
