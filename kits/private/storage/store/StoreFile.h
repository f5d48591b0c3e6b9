// The file of the store: opening it, making it, bringing it up to the version of this program, and
// setting it aside when it is damaged.
#pragma once

#include "FileDescriptor.h"
#include "Sqlite.h"

#include <string>

namespace store {

// The turn of one program among those that use the stores of a directory. It is taken to open or
// rename a store, and to wait for the write lock of one: SQLite's waiting is no queue, and a
// program that writes without a pause would keep all others from it for as long as it likes.
class DirectoryLock {
public:
    // Waits up to ten seconds. Throws Failure: B_BUSY, or the directory of path cannot be opened.
    explicit DirectoryLock(const std::string& path);

private:
    FileDescriptor fDirectory; // the lock ends with it
};

// Throws Failure for errno as it stands: "what: No such file or directory".
[[noreturn]] void ThrowErrno(const std::string& what);

enum class Opening { kForReading, kForWriting };

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
