// Writing the files that a person keeps.
#pragma once

#include "FileDescriptor.h"

#include <cstdio>
#include <string>
#include <sys/stat.h>

// Where a path that a person gave for a file to be written leads. Links at the end of the path are
// followed, but none that somebody else may have planted: in a folder in which everybody may make
// files, only links of this user and of the folder's owner. Pipes there are held to the same.
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

// A file that is there whole or not at all, whatever ends the program or fills the disk: it is
// written beside its place, where nobody can have planted anything, and takes it when it is on the
// disk. Every file that a person keeps is written by it.
class WholeFile {
public:
    // Begins to write the file at path; what is there stays until Commit(). Links are followed, see
    // OutputPlace. Devices and pipes are written as they are, and a pipe's reader is waited for.
    explicit WholeFile(const char* path);
    // Without a Commit() nothing has changed, and nothing is left behind.
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    // What the contents are put into, which keeps them in memory. Null: see Error().
    FILE* Stream() const { return fStream; }
    // Puts what was written into its place, with owner, group, mode, access list and the user's
    // attributes of an older file there. False, and that one is as it was: see Error(). Once only.
    [[nodiscard]] bool Commit();
    // Why the last of these did not work, as the system says it: "No space left on device".
    const std::string& Error() const { return fError; }

    // Whether a file could be written at path: empty, or why not. Waits for nothing, leaves
    // nothing.
    [[nodiscard]] static std::string WhyNot(const char* path);

private:
    void MakeBeside();
    bool KeepRights();
    bool WriteContents();
    bool TakePlace();
    void Close();
    bool Fail(const char* reason = nullptr); // null: as errno says

    const OutputPlace fPlace;
    std::string fError;
    std::string fBeside; // its name in the folder; empty: it has none
    FileDescriptor fFile;
    FILE* fStream = nullptr; // in memory
    char* fContents = nullptr; // of it
    size_t fSize = 0;
};
