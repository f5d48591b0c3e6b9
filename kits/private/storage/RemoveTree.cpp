#include "RemoveTree.h"

#include <cstdint>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kMostLevels = 100; // of what a signal's stack has to hold
constexpr int kOpen = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

bool IsSameFile(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

// Whether something is mounted at the directory, from the same device or another.
bool IsMounted(int folder)
{
    struct statx info = {};
    const int result = statx(folder, "", AT_EMPTY_PATH, STATX_TYPE, &info);
    return result != 0 || (info.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
}

void Empty(int folder, int levels);

bool RemoveEntry(int above, const char* name, int levels)
{
    if (unlinkat(above, name, 0) == 0)
        return true;
    const int folder = openat(above, name, kOpen);
    if (folder < 0)
        return false;
    if (levels > 0 && !IsMounted(folder))
        Empty(folder, levels - 1);
    close(folder);
    return unlinkat(above, name, AT_REMOVEDIR) == 0;
}

// One round through the directory, which readdir() would take memory for. Whether something went.
bool RemoveEntries(int folder, int levels)
{
    bool removed = false;
    alignas(dirent64) char entries[4096];
    lseek(folder, 0, SEEK_SET);
    for (ssize_t size; (size = getdents64(folder, entries, sizeof(entries))) > 0;) {
        for (ssize_t at = 0; at < size;) {
            const auto* entry = reinterpret_cast<const dirent64*>(entries + at);
            at += entry->d_reclen;
            if (strcmp(entry->d_name, ".") != 0 && strcmp(entry->d_name, "..") != 0)
                removed = RemoveEntry(folder, entry->d_name, levels) || removed;
        }
    }
    return removed;
}

void Empty(int folder, int levels)
{
    while (RemoveEntries(folder, levels)) { }
}

} // namespace

void storage::RemoveTree(int above, const char* name, int folder)
{
    struct stat open = {};
    struct stat there = {};
    if (fstat(folder, &open) != 0 || IsMounted(folder))
        return;
    Empty(folder, kMostLevels);
    if (fstatat(above, name, &there, AT_SYMLINK_NOFOLLOW) == 0 && IsSameFile(open, there))
        unlinkat(above, name, AT_REMOVEDIR);
}
