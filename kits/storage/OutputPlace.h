// Where a path that a person gave for a file to be written leads.
#pragma once

#include <string>
#include <sys/stat.h>

#include "FileDescriptor.h"

// Links at the end of the path are followed, but none that somebody else may have planted: in a
// folder in which everybody may make files, only links of this user and of the folder's owner.
// Pipes there are held to the same.
class OutputPlace {
public:
    explicit OutputPlace(const std::string& path);

    // Why nothing can be written there, for people; empty: it can, as far as rights tell.
    const std::string& Error() const { return fError; }
    // Whether there is something that takes what is written as it comes: a device, a pipe, or an
    // open file of some process, as /dev/stdout is. It must not be replaced.
    bool IsStream() const { return fIsStream; }
    // Opens that, and may wait for the reader of a pipe. An open file of this process goes on where
    // it stands. -1 and errno on errors.
    [[nodiscard]] FileDescriptor OpenStream() const;

    int Directory() const { return fDirectory.Get(); } // which may not be readable
    const char* Leaf() const { return fLeaf.c_str(); } // no link
    // The file that is there; null if there is none yet.
    const struct stat* Old() const { return fExists ? &fOld : nullptr; }

private:
    bool Follow(const std::string& path);
    bool Step(int base, const std::string& path);
    bool Look();
    bool IsTrusted(const struct stat& there) const;
    bool Fail(int error);

    std::string fError;
    FileDescriptor fDirectory;
    std::string fLeaf;
    struct stat fOld = {};
    bool fExists = false;
    bool fIsStream = false;
};
