// The file of the store: opening it, making it, bringing it up to the version of this program, and
// setting it aside when it is damaged.
#pragma once

#include "Sqlite.h"

namespace store {

enum class Opening { ForReading, ForWriting };

struct OpenStore {
    Database database;
    uint64 inode = 0;
    bool canWrite = true; // false: a last resort to read it where nothing can be written
};

// Opens the store at path, which for reading must exist. Throws Failure, nothing changed:
// B_UNSUPPORTED: a later version of the program made it; or it cannot be used as it is. A damaged
// one is set aside, with a line on standard error: a new one is made for writing, for reading
// B_ENTRY_NOT_FOUND is thrown.
[[nodiscard]] OpenStore OpenStoreFile(const std::string& path, Opening opening);

// Gives the store at path another name, if it is still the file with that inode, and says so on
// standard error. It must be closed. Throws Failure if that is not possible.
void SetAside(const std::string& path, uint64 inode, const std::string& reason);

[[nodiscard]] uint64 InodeOf(const std::string& path); // 0: there is nothing

} // namespace store
