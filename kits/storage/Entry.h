// Where a file is, without it being open: its directory and its name in there.
#pragma once

#include "FileDescriptor.h"
#include "Statable.h"
#include "StorageDefs.h"

#include <string>

class BPath;

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
// must exist, the file need not. B_BAD_VALUE: path is NULL or empty; B_ENTRY_NOT_FOUND or
// B_NOT_A_DIRECTORY: there is no such directory; *ref is then as it was.
status_t get_ref_for_path(const char* path, entry_ref* ref);
// The file's absolute path; empty if it is not known.
std::string PathOfRef(const entry_ref& ref);

// A name in a directory, which need not be that of a file yet. It holds the directory open, so it
// stays good when the directory is moved. Attributes of a file that is renamed or moved by it move
// along, those of one that is removed are removed.
class BEntry : public BStatable {
public:
    BEntry() = default; // B_NO_INIT
    // As SetTo().
    BEntry(const char* path, bool traverse = false);
    BEntry(const entry_ref* ref, bool traverse = false);

    status_t InitCheck() const; // what SetTo() returned
    bool Exists() const; // there is something of that name; a dangling link is
    status_t GetStat(struct stat* info) const override;

    // The last element must be in a directory that exists: B_ENTRY_NOT_FOUND, B_NOT_A_DIRECTORY,
    // B_PERMISSION_DENIED. B_BAD_VALUE: NULL, an empty path, or a reference without a path;
    // B_NAME_TOO_LONG; B_LINK_LIMIT. With traverse a link is followed to what it points to.
    // Relative paths start at the working directory.
    status_t SetTo(const char* path, bool traverse = false);
    status_t SetTo(const entry_ref* ref, bool traverse = false);
    void Unset();

    // B_NO_INIT; B_BAD_VALUE: NULL; B_ENTRY_NOT_FOUND: the directory has gone, or (the parents of)
    // this is the root.
    status_t GetRef(entry_ref* ref) const;
    status_t GetPath(BPath* path) const;
    status_t GetParent(BEntry* parent) const;

    // Gives the file another place, which the entry then stands for. Relative paths start at the
    // entry's own directory.
    // B_FILE_EXISTS: something is there, and clobber is false; B_ENTRY_NOT_FOUND;
    // B_CROSS_DEVICE_LINK; B_DIRECTORY_NOT_EMPTY; B_PERMISSION_DENIED ...
    status_t Rename(const char* path, bool clobber = false);
    // Takes the file away, or the empty directory (B_DIRECTORY_NOT_EMPTY).
    status_t Remove();

private:
    friend class BDirectory;
    friend class BFile;
    friend class BNode;

    time_t BirthTime() const override;
    status_t Set(int base, const std::string& path, bool traverse);
    status_t Open(int base, const std::string& path);
    status_t Follow(int linksLeft);
    status_t Relocate(int base, const std::string& path, bool clobber);

    status_t fStatus = B_NO_INIT;
    FileDescriptor fDirectory;
    std::string fName; // "." for the root
};
