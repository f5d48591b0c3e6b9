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
// B_UNSUPPORTED: a later version of the program made it; or it cannot be used as it is. One that
// can be read and is damaged is set aside, with a line on standard error: a new one is made for
// writing, for reading B_IO_ERROR is thrown.
[[nodiscard]] OpenStore OpenStoreFile(const std::string& path, Opening opening);

// Gives the store at path another name, if it is still the file with that inode, and says so on
// standard error. It must be closed. Throws Failure if that is not possible, or it is not damaged:
// then something could not be read, which is no reason to do without the rest.
void SetAside(const std::string& path, uint64 inode, const std::string& reason);

// 0: there is nothing. Throws Failure if that cannot be told.
[[nodiscard]] uint64 InodeOf(const std::string& path);

} // namespace store
