#include "OwnFolder.h"

#include "FileDescriptor.h"
#include "LeafLock.h"
#include "Locations.h"
#include "SystemTree.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sstream>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kMostLevels = 100; // of what a signal's stack has to hold
constexpr int kOpenFolder = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

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
    const int folder = openat(above, name, kOpenFolder);
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

// Removes the directory called name in the one open as above, with all in it, without leaving it:
// no link is followed, no path is looked up and no other file system, nor another place of the same
// one, is entered. folder is the same directory, open for reading. What cannot be removed stays.
// May be called in a signal handler and while others still write there: it goes on until a round
// finds nothing more to remove.
void RemoveTree(int above, const char* name, int folder)
{
    struct stat open = {};
    struct stat there = {};
    if (fstat(folder, &open) != 0 || IsMounted(folder))
        return;
    Empty(folder, kMostLevels);
    if (fstatat(above, name, &there, AT_SYMLINK_NOFOLLOW) == 0 && IsSameFile(open, there))
        unlinkat(above, name, AT_REMOVEDIR);
}

constexpr char kPrefix[] = ".tarvex-temp-";
constexpr size_t kDigits = 16; // after it, hexadecimal
constexpr mode_t kMode = 0700;

// The folder, locked by flock() as long as the process lives: that says who is alive across
// containers too, and keeps the system's own cleaning of /tmp away.
struct MadeFolder {
    int above; // the directory that it lies in
    int self;
    pid_t owner;
    std::string name;
    std::string path;
    const MadeFolder* before; // which has gone, or has been mounted over
};

// What a signal handler may read: complete before it is put here, and never freed.
std::atomic<const MadeFolder*> gFolder = nullptr;
std::atomic<bool> gEnded = false;
static_assert(std::atomic<const MadeFolder*>::is_always_lock_free, "used in a signal handler");

Mutex gMaking; // leaf
int gTold GUARDED_BY(gMaking) = 0; // an errno, or kUnsafe

constexpr int kUnsafe = -1; // beside the numbers of errno

std::string NewFolderName()
{
    return kPrefix + RandomDigits();
}

bool IsName(const std::string& name)
{
    const size_t prefix = sizeof(kPrefix) - 1;
    return name.starts_with(kPrefix) && name.size() == prefix + kDigits
        && name.find_first_not_of("0123456789abcdef", prefix) == name.npos;
}

// In a name space that knows few users all others, root too, are shown as this one.
bool IsUnknown(uid_t user)
{
    constexpr uid_t kOverflow = 65534;
    constexpr long long kAll = 4294967295;
    std::istringstream map(kernel::ReadText("/proc/self/uid_map"));
    long long inside = 0, outside = 0, count = kAll;
    map >> inside >> outside >> count;
    return user == kOverflow && count < kAll;
}

// Whether nobody but this user and root can put something else in the place of what lies there.
bool IsSafe(int directory)
{
    struct stat info = {};
    if (fstat(directory, &info) != 0)
        return false;
    const bool isTrusted = info.st_uid == 0 || info.st_uid == geteuid() || IsUnknown(info.st_uid);
    return isTrusted && (!(info.st_mode & S_IWOTH) || info.st_mode & S_ISVTX);
}

// Whether name is the very folder that is open, this user's and closed to all others.
bool IsOwn(int above, const char* name, int folder)
{
    struct stat open = {};
    struct stat there = {};
    return fstat(folder, &open) == 0 && fstatat(above, name, &there, AT_SYMLINK_NOFOLLOW) == 0
        && open.st_dev == there.st_dev && open.st_ino == there.st_ino && there.st_uid == geteuid()
        && (there.st_mode & 0777) == kMode;
}

// Makes the folder of that name and locks it. An error of errno; EEXIST: another name may do.
int Make(int above, const std::string& name, FileDescriptor& folder)
{
    if (mkdirat(above, name.c_str(), kMode) != 0)
        return errno;
    folder = FileDescriptor(openat(above, name.c_str(), kOpenFolder));
    if (!folder.IsOpen()) {
        const int error = errno;
        unlinkat(above, name.c_str(), AT_REMOVEDIR); // nobody could open it later either
        return error == ENOENT ? EEXIST : error;
    }
    fchmod(folder.Get(), kMode); // the umask may have taken more
    // A program that starts just now may take it for a dead one's until it is locked.
    if (flock(folder.Get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return EEXIST;
    return IsOwn(above, name.c_str(), folder.Get()) ? 0 : EEXIST;
}

void OnEnd(int number)
{
    folders::RemoveOwnTemporary();
    raise(number); // for which nothing is installed any more
}

// So that the folder goes with exit() and with the signals that nobody else handles.
bool WatchEnds()
{
    constexpr int kSignals[] = { SIGHUP, SIGINT, SIGQUIT, SIGILL, SIGTRAP, SIGABRT, SIGBUS, SIGFPE,
        SIGUSR1, SIGSEGV, SIGUSR2, SIGPIPE, SIGALRM, SIGTERM, SIGXCPU, SIGXFSZ, SIGVTALRM, SIGPROF,
        SIGIO, SIGPWR, SIGSYS };
    struct sigaction action = {};
    action.sa_handler = OnEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_NODEFER;
    for (const int number : kSignals) {
        struct sigaction before = {};
        sigaction(number, nullptr, &before);
        if (before.sa_handler == SIG_DFL)
            sigaction(number, &action, nullptr);
    }
    return std::atexit([] { folders::RemoveOwnTemporary(); }) == 0;
}

// Makes the folder that path says from now on. The one before stays open: a signal may just now
// have found it.
int MakeBelow(const std::string& base, std::string& path)
{
    FileDescriptor above(open(base.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    if (!above.IsOpen())
        return errno;
    if (!IsSafe(above.Get()))
        return kUnsafe;
    FileDescriptor folder;
    std::string name;
    int error = EEXIST;
    for (int tries = 0; tries < 100 && error == EEXIST; tries++) {
        name = NewFolderName();
        error = Make(above.Get(), name, folder);
    }
    if (error != 0)
        return error;
    path = JoinPath(base, name);
    gFolder = new MadeFolder { above.Release(), folder.Release(), getpid(), name, path, gFolder };
    static const bool sIsWatched = WatchEnds();
    return sIsWatched ? 0 : ENOMEM;
}

// Removes what killed programs of this user have left below base.
void ClearDead(const std::string& base)
{
    DIR* const directory = opendir(base.c_str());
    if (!directory)
        return;
    const int above = dirfd(directory);
    const bool isSafe = IsSafe(above);
    while (const dirent* entry = isSafe ? readdir(directory) : nullptr) {
        if (!IsName(entry->d_name))
            continue;
        const FileDescriptor folder(openat(above, entry->d_name, kOpenFolder));
        if (folder.IsOpen() && flock(folder.Get(), LOCK_EX | LOCK_NB) == 0
            && IsOwn(above, entry->d_name, folder.Get()))
            RemoveTree(above, entry->d_name, folder.Get());
    }
    closedir(directory);
}

// When a program starts, whether it will need a folder or not.
[[maybe_unused]] const bool kIsCleared = (ClearDead(folders::Temporary()), true);

void TellOnce(const std::string& base, int error) REQUIRES(gMaking)
{
    if (error != gTold)
        fprintf(stderr, "No temporary folder below <%s>: %s\n", base.c_str(),
            error == kUnsafe ? "others may replace what lies there" : strerror(error));
    gTold = error;
}

} // namespace

status_t folders::OwnTemporary(std::string& path)
{
    const LeafLock lock(gMaking);
    const MadeFolder* folder = gFolder;
    if (folder && folder->owner == getpid()
        && IsOwn(AT_FDCWD, folder->path.c_str(), folder->self)) {
        path = folder->path;
        return B_OK;
    }
    const std::string base = Temporary();
    path = JoinPath(base, NewFolderName());
    const int error = gEnded ? ECANCELED : MakeBelow(base, path);
    if (error != 0) {
        TellOnce(base, error);
        return error == kUnsafe ? B_NOT_ALLOWED : StatusOfErrno(error);
    }
    return B_OK;
}

void folders::RemoveOwnTemporary()
{
    gEnded = true;
    for (const MadeFolder* folder = gFolder; folder; folder = folder->before)
        if (folder->owner == getpid())
            RemoveTree(folder->above, folder->name.c_str(), folder->self);
}
