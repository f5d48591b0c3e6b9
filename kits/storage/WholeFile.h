// A file that is there whole or not at all, whatever ends the program or fills the disk: it is
// written beside its place, where nobody can have planted anything, and takes it when it is on the
// disk. Every file that a person keeps is written by it.
#pragma once

#include <cstdio>
#include <string>

#include "FileDescriptor.h"
#include "OutputPlace.h"

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
