// An open directory: its entries.
#pragma once

#include "EntryList.h"
#include "Node.h"

#include <dirent.h>
#include <memory>

class BDirectory : public BNode, public BEntryList {
public:
    BDirectory() = default; // B_NO_INIT
    // As SetTo().
    BDirectory(const char* path);
    BDirectory(const BDirectory& directory); // starts at its first entry

    // Links are followed. B_NOT_A_DIRECTORY; else as BNode.
    status_t SetTo(const char* path);
    void Unset() override;

    status_t GetEntry(BEntry* entry) const; // the directory itself
    status_t GetNextEntry(BEntry* entry, bool traverse = false) override;
    status_t GetNextRef(entry_ref* ref) override;
    status_t Rewind() override;
    int32 CountEntries() override;

private:
    struct CloseStream {
        void operator()(DIR* stream) const;
    };
    status_t Take(int descriptor); // of a directory, or -1
    const char* NextName(); // NULL at the end

    std::unique_ptr<DIR, CloseStream> fStream; // opened by the first NextName()
};

// Makes the directory and those on the way to it that are missing, with the rights of mode less the
// process's mask. B_OK also where it exists; B_BAD_VALUE: NULL or empty; B_NOT_A_DIRECTORY: a file
// is in the way; B_PERMISSION_DENIED, B_DEVICE_FULL ...
status_t create_directory(const char* path, mode_t mode);
