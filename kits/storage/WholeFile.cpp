#include "WholeFile.h"

#include "Locations.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/statfs.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

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
        // The entries of /proc/self/fd look like links, but what they lead to may have no path, or
        // another file at it by now: they are opened as they are.
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
        if (!Step(base.Get(), std::string(target, static_cast<size_t>(length))))
            return false;
    }
    return Fail(ELOOP);
}

bool OutputPlace::IsTrusted(const struct stat& there) const
{
    struct stat folder = {};
    if (fstat(Directory(), &folder) != 0)
        return false;
    // A folder like /tmp: everybody may make files there, and only their owners may remove them.
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

namespace {

constexpr char kAccessList[] = "system.posix_acl_access";

// A name that cannot be known beforehand.
std::string NewName()
{
    return ".tarvex-" + RandomDigits();
}

std::string LinkOf(int descriptor)
{
    return "/proc/self/fd/" + std::to_string(descriptor);
}

// True also if there is no such attribute, or none in that file system.
bool CopyAttribute(const std::string& from, int to, const char* name)
{
    const ssize_t size = lgetxattr(from.c_str(), name, nullptr, 0);
    if (size < 0)
        return errno == ENODATA || errno == ENOTSUP;
    std::vector<char> value(static_cast<size_t>(size) + 1);
    const ssize_t read = lgetxattr(from.c_str(), name, value.data(), value.size());
    return read >= 0 && fsetxattr(to, name, value.data(), static_cast<size_t>(read), 0) == 0;
}

// Those that a person or a program put on the file; what cannot be taken along is no loss of data.
void CopyUserAttributes(const std::string& from, int to)
{
    std::vector<char> names(1 << 16);
    const ssize_t size = llistxattr(from.c_str(), names.data(), names.size());
    for (ssize_t at = 0; at < size;
         at += static_cast<ssize_t>(strlen(&names[static_cast<size_t>(at)])) + 1)
        if (strncmp(&names[static_cast<size_t>(at)], "user.", 5) == 0)
            static_cast<void>(CopyAttribute(from, to, &names[static_cast<size_t>(at)]));
}

} // namespace

WholeFile::WholeFile(const char* path) : fPlace(path), fError(fPlace.Error())
{
    if (!fError.empty())
        return;
    fStream = open_memstream(&fContents, &fSize);
    if (!fStream) {
        static_cast<void>(Fail());
        return;
    }
    if (fPlace.IsStream())
        fFile = fPlace.OpenStream();
    else
        MakeBeside();
    if (!fFile.IsOpen())
        static_cast<void>(Fail());
    if (!fFile.IsOpen() || (!fPlace.IsStream() && !KeepRights()))
        Close();
}

WholeFile::~WholeFile()
{
    Close();
    free(fContents);
    if (!fBeside.empty())
        unlinkat(fPlace.Directory(), fBeside.c_str(), 0);
}

void WholeFile::Close()
{
    if (fStream)
        fclose(fStream);
    fStream = nullptr;
    fFile = FileDescriptor();
}

bool WholeFile::Fail(const char* reason)
{
    fError = reason ? reason : strerror(errno);
    return false;
}

// Or leaves errno.
void WholeFile::MakeBeside()
{
    const int directory = fPlace.Directory();
    // Nobody else may read the contents before the file has the rights of the old one.
    const mode_t mode = fPlace.Old() ? 0600 : 0666;
    // Without a name it is gone even if the program is killed. Not every file system has that.
    if (access("/proc/self/fd", X_OK) == 0)
        fFile = FileDescriptor(openat(directory, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, mode));
    if (fFile.IsOpen())
        return;
    const std::string name = NewName();
    const int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    fFile = FileDescriptor(openat(directory, name.c_str(), flags, mode));
    if (fFile.IsOpen())
        fBeside = name;
}

bool WholeFile::KeepRights()
{
    const int file = fFile.Get();
    struct stat made = {};
    if (fstat(file, &made) != 0)
        return Fail();
    const struct stat* old = fPlace.Old();
    if (!old)
        return true;
    // The owner comes before the mode: a change of it takes away the bits that run a file as its
    // owner.
    const bool isOwners = made.st_uid == old->st_uid && made.st_gid == old->st_gid;
    if (!isOwners && fchown(file, old->st_uid, old->st_gid) != 0)
        return Fail("its owner or group could not be kept");
    const std::string from = LinkOf(fPlace.Directory()) + "/" + fPlace.Leaf();
    fremovexattr(file, kAccessList); // one that comes from the folder
    if (!CopyAttribute(from, file, kAccessList))
        return Fail("its access list could not be kept");
    const mode_t mode = old->st_mode & 07777;
    const bool isSame = fstat(file, &made) == 0 && (made.st_mode & 07777) == mode;
    if (!isSame && fchmod(file, mode) != 0)
        return Fail("its mode could not be kept");
    CopyUserAttributes(from, file);
    return true;
}

bool WholeFile::Commit()
{
    if (!fStream)
        return false;
    const bool isDone = WriteContents() && (fPlace.IsStream() || TakePlace());
    Close();
    return isDone;
}

bool WholeFile::WriteContents()
{
    if (ferror(fStream) != 0 || fflush(fStream) != 0)
        return Fail(strerror(ENOMEM)); // it only grows in memory
    fflush(stdout); // which may be the same file: what was printed before comes first
    for (size_t done = 0; done < fSize;) {
        const ssize_t written = write(fFile.Get(), fContents + done, fSize - done);
        if (written < 0 && errno != EINTR)
            return Fail();
        done += static_cast<size_t>(std::max<ssize_t>(written, 0));
    }
    return true;
}

bool WholeFile::TakePlace()
{
    const int directory = fPlace.Directory();
    if (fsync(fFile.Get()) != 0)
        return Fail();
    if (fBeside.empty()) {
        const std::string name = NewName();
        const std::string file = LinkOf(fFile.Get());
        // A link cannot replace what is there; a renaming can, and in one step. So the file gets
        // some name first.
        if (linkat(AT_FDCWD, file.c_str(), directory, name.c_str(), AT_SYMLINK_FOLLOW) != 0)
            return Fail();
        fBeside = name;
    }
    if (renameat(directory, fBeside.c_str(), directory, fPlace.Leaf()) != 0)
        return Fail();
    fBeside.clear();
    // The new name is on the disk only when the folder is. Some file systems cannot do that with a
    // folder, which is no error of the disk.
    const FileDescriptor folder(openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return !folder.IsOpen() || fsync(folder.Get()) == 0 || errno != EIO || Fail();
}

std::string WholeFile::WhyNot(const char* path)
{
    const OutputPlace place(path);
    return place.IsStream() || !place.Error().empty() ? place.Error() : WholeFile(path).Error();
}
