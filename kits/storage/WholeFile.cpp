#include "WholeFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/random.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr char kAccessList[] = "system.posix_acl_access";

// A name that cannot be known beforehand; empty, and errno is set, on errors.
std::string NewName()
{
    unsigned char bytes[16];
    if (getrandom(bytes, sizeof bytes, 0) != sizeof bytes)
        return "";
    std::string name = ".tarvex-";
    for (const unsigned char byte : bytes)
        name += { "0123456789abcdef"[byte >> 4], "0123456789abcdef"[byte & 15] };
    return name;
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
    std::vector<char> value(size_t(size) + 1);
    const ssize_t read = lgetxattr(from.c_str(), name, value.data(), value.size());
    return read >= 0 && fsetxattr(to, name, value.data(), size_t(read), 0) == 0;
}

// Those that a person or a program put on the file; what cannot be taken along is no loss of data.
void CopyUserAttributes(const std::string& from, int to)
{
    std::vector<char> names(1 << 16);
    const ssize_t size = llistxattr(from.c_str(), names.data(), names.size());
    for (ssize_t at = 0; at < size; at += ssize_t(strlen(&names[size_t(at)])) + 1)
        if (strncmp(&names[size_t(at)], "user.", 5) == 0)
            static_cast<void>(CopyAttribute(from, to, &names[size_t(at)]));
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
    const mode_t mode = fPlace.Old() ? 0600 : 0666;
    // Without a name it is gone even if the program is killed. Not every file system has that.
    if (access("/proc/self/fd", X_OK) == 0)
        fFile = FileDescriptor(openat(directory, ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, mode));
    if (fFile.IsOpen())
        return;
    const std::string name = NewName();
    const int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    if (!name.empty())
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
        done += size_t(std::max<ssize_t>(written, 0));
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
        if (name.empty()
            || linkat(AT_FDCWD, file.c_str(), directory, name.c_str(), AT_SYMLINK_FOLLOW) != 0)
            return Fail();
        fBeside = name;
    }
    if (renameat(directory, fBeside.c_str(), directory, fPlace.Leaf()) != 0)
        return Fail();
    fBeside.clear();
    const FileDescriptor folder(openat(directory, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return !folder.IsOpen() || fsync(folder.Get()) == 0 || errno != EIO || Fail();
}

std::string WholeFile::WhyNot(const char* path)
{
    const OutputPlace place(path);
    return place.IsStream() || !place.Error().empty() ? place.Error() : WholeFile(path).Error();
}
