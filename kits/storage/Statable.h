// What a file's inode says: the part that BEntry and BNode share. A link is asked itself, not what
// it points to. Times are in seconds since 1970.
#pragma once

#include "SupportDefs.h"

#include <ctime>
#include <unistd.h>

struct stat;

class BStatable {
public:
    virtual ~BStatable() = default;

    // All at once. B_NO_INIT, B_BAD_VALUE (NULL), B_ENTRY_NOT_FOUND and the file system's errors;
    // so do the following, which then leave their result as it was.
    virtual status_t GetStat(struct stat* info) const = 0;

    bool IsFile() const; // false on any error
    bool IsDirectory() const;
    bool IsSymLink() const;

    status_t GetOwner(uid_t* owner) const;
    status_t GetSize(off_t* size) const; // in bytes
    status_t GetModificationTime(time_t* time) const;
    status_t GetAccessTime(time_t* time) const;
    // Where the file system keeps none, the earlier of the last changes of contents and inode.
    status_t GetCreationTime(time_t* time) const;

private:
    // The time of birth; 0 where the file system keeps none.
    virtual time_t BirthTime() const = 0;
};
