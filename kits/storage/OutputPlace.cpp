#include "OutputPlace.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/statfs.h>
#include <unistd.h>

#include "Locations.h"

namespace {

constexpr int kMostLinks = 40; // in a row, as many as the system follows

bool IsOfProcesses(int directory)
{
    struct statfs info = {};
    return fstatfs(directory, &info) == 0 && info.f_type == PROC_SUPER_MAGIC;
}

// The number of this process's own descriptor that the entry stands for; -1: none.
int OwnDescriptor(int directory, const std::string& leaf)
{
    struct stat there = {};
    struct stat own = {};
    const bool isOwn = fstat(directory, &there) == 0 && stat("/proc/self/fd", &own) == 0
        && there.st_dev == own.st_dev && there.st_ino == own.st_ino;
    return isOwn && leaf.find_first_not_of("0123456789") == leaf.npos ? atoi(leaf.c_str()) : -1;
}

} // namespace

OutputPlace::OutputPlace(const std::string& path)
{
    static_cast<void>(Follow(path) && Look());
}

bool OutputPlace::Fail(int error)
{
    fError = strerror(error);
    return false;
}

bool OutputPlace::Step(int base, const std::string& path)
{
    const PathParts parts = SplitPath(path);
    fDirectory =
        FileDescriptor(openat(base, parts.directory.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!fDirectory.IsOpen())
        return Fail(errno);
    fLeaf = parts.leaf;
    const bool isFolder = path.back() == '/' || fLeaf == "." || fLeaf == "..";
    return !isFolder || Fail(EISDIR);
}

bool OutputPlace::Follow(const std::string& path)
{
    if (path.empty())
        return Fail(ENOENT);
    if (!Step(AT_FDCWD, path))
        return false;
    for (int links = 0; links < kMostLinks; links++) {
        fIsStream = IsOfProcesses(Directory());
        char target[PATH_MAX + 1];
        const ssize_t length =
            fIsStream ? -1 : readlinkat(Directory(), Leaf(), target, sizeof target - 1);
        if (length <= 0)
            return fIsStream || errno == EINVAL || errno == ENOENT || Fail(errno);
        struct stat link = {};
        if (fstatat(Directory(), Leaf(), &link, AT_SYMLINK_NOFOLLOW) != 0)
            return Fail(errno);
        if (!IsTrusted(link))
            return Fail(EACCES);
        const FileDescriptor base = fDirectory;
        if (!Step(base.Get(), std::string(target, size_t(length))))
            return false;
    }
    return Fail(ELOOP);
}

bool OutputPlace::IsTrusted(const struct stat& there) const
{
    struct stat folder = {};
    if (fstat(Directory(), &folder) != 0)
        return false;
    const bool isEverybodys = (folder.st_mode & S_ISVTX) && (folder.st_mode & S_IWOTH);
    return !isEverybodys || there.st_uid == geteuid() || there.st_uid == folder.st_uid;
}

bool OutputPlace::Look()
{
    const int follow = fIsStream ? 0 : AT_SYMLINK_NOFOLLOW;
    if (fstatat(Directory(), Leaf(), &fOld, follow) != 0)
        return (errno == ENOENT && !fIsStream) || Fail(errno);
    fExists = true;
    if (S_ISDIR(fOld.st_mode))
        return Fail(EISDIR);
    fIsStream |= !S_ISREG(fOld.st_mode);
    if (S_ISFIFO(fOld.st_mode) && follow != 0 && !IsTrusted(fOld))
        return Fail(EACCES);
    return faccessat(Directory(), Leaf(), W_OK, AT_EACCESS) == 0 || Fail(errno);
}

FileDescriptor OutputPlace::OpenStream() const
{
    const int own = OwnDescriptor(Directory(), fLeaf);
    if (own >= 0)
        return FileDescriptor(fcntl(own, F_DUPFD_CLOEXEC, 0));
    return FileDescriptor(openat(Directory(), Leaf(), O_WRONLY | O_NOCTTY | O_CLOEXEC));
}
