// An open directory: its entries, and new ones in it.
#pragma once

#include <dirent.h>
#include <memory>

#include "EntryList.h"
#include "Node.h"

class BFile;

class BDirectory : public BNode, public BEntryList {
public:
    BDirectory() = default; // B_NO_INIT
    // As SetTo().
    BDirectory(const char* path);
    BDirectory(const entry_ref* ref);
    BDirectory(const BEntry* entry);
    BDirectory(const BDirectory* directory, const char* path);
    BDirectory(const BDirectory& directory); // starts at its first entry
    BDirectory& operator=(const BDirectory& directory);

    // Links are followed. B_NOT_A_DIRECTORY; else as BNode.
    status_t SetTo(const char* path);
    status_t SetTo(const entry_ref* ref);
    status_t SetTo(const BEntry* entry);
    status_t SetTo(const BDirectory* directory, const char* path);
    void Unset() override;

    status_t GetEntry(BEntry* entry) const; // the directory itself
    bool IsRootDirectory() const;
    // The entry at path, which must exist. B_ENTRY_NOT_FOUND; else as BEntry::SetTo(). *entry is
    // then without one.
    status_t FindEntry(const char* path, BEntry* entry, bool traverse = false) const;
    // Whether path exists, of one of the kinds; an absolute one must lie below this directory.
    bool Contains(const char* path, int32 nodeFlags = B_ANY_NODE) const;
    bool Contains(const BEntry* entry, int32 nodeFlags = B_ANY_NODE) const; // at any depth
    status_t GetStatFor(const char* path, struct stat* info) const; // links not followed

    status_t GetNextEntry(BEntry* entry, bool traverse = false) override;
    status_t GetNextRef(entry_ref* ref) override;
    status_t Rewind() override;
    int32 CountEntries() override;

    // Make the entry; what is opened is set to it unless it is NULL. B_FILE_EXISTS: something is
    // there (a file only with failIfExists: it is otherwise erased); B_ENTRY_NOT_FOUND: a directory
    // on the way is missing; B_PERMISSION_DENIED, B_DEVICE_FULL ...
    status_t CreateDirectory(const char* path, BDirectory* directory);
    status_t CreateFile(const char* path, BFile* file, bool failIfExists = false);

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
