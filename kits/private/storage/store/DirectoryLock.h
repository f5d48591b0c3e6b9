// The turn of one program among those that use the stores of a directory. It is taken to open or
// rename a store, and to wait for the write lock of one: SQLite's waiting is no queue, and a
// program that writes without a pause would keep all others from it for as long as it likes.
#pragma once

#include <string>

#include "FileDescriptor.h"

namespace store {

class DirectoryLock {
public:
    // Waits up to ten seconds. Throws Failure: B_BUSY, or the directory of path cannot be opened.
    explicit DirectoryLock(const std::string& path);

private:
    FileDescriptor fDirectory; // the lock ends with it
};

// Throws Failure for errno as it stands: "what: No such file or directory".
[[noreturn]] void ThrowErrno(const std::string& what);

} // namespace store
