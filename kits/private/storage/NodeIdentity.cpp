#include "NodeIdentity.h"

#include "FileDescriptor.h"
#include "Locations.h"

#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace {

// Where the running program was started from. It may have been replaced there in the meantime.
const std::string& OwnProgram()
{
    static const std::string sProgram = [] {
        char path[4096 + 1];
        const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
        std::string text(path, length > 0 ? static_cast<size_t>(length) : 0);
        const std::string remark = " (deleted)";
        if (text.ends_with(remark) && access(text.c_str(), F_OK) != 0)
            text.resize(text.size() - remark.size());
        return text;
    }();
    return sProgram;
}

int64 DeviceOfOpen(int descriptor, uint64 mount)
{
    struct statfs info = {};
    int64 id = 0;
    static_assert(sizeof info.f_fsid == sizeof id);
    if (fstatfs(descriptor, &info) == 0)
        memcpy(&id, &info.f_fsid, sizeof id);
    return id != 0 ? id : static_cast<int64>(mount);
}

} // namespace

status_t IdentifyNode(int directory, const std::string& name, NodeIdentity* identity)
{
    // Opened first, then asked: so all answers are about the same file, whatever is renamed
    // meanwhile. O_PATH needs no right to read it and waits for no pipe.
    const int flags = O_PATH | O_NOFOLLOW | O_CLOEXEC;
    const FileDescriptor named(name.empty() ? -1 : openat(directory, name.c_str(), flags));
    if (!name.empty() && !named.IsOpen())
        return StatusOfErrno();
    const int node = name.empty() ? directory : named.Get();
    struct statx info = {};
    const unsigned mask = STATX_TYPE | STATX_MODE | STATX_NLINK | STATX_INO | STATX_BTIME;
    if (statx(node, "", AT_EMPTY_PATH | AT_SYMLINK_NOFOLLOW, mask, &info) != 0)
        return StatusOfErrno();
    identity->inode = info.stx_ino;
    identity->links = info.stx_nlink;
    identity->birth = 0;
    if (info.stx_mask & STATX_BTIME)
        identity->birth =
            static_cast<int64>(info.stx_btime.tv_sec) * 1'000'000'000 + info.stx_btime.tv_nsec;
    identity->mount = makedev(info.stx_dev_major, info.stx_dev_minor);
    identity->device = DeviceOfOpen(node, identity->mount);
    identity->path = name.starts_with('/') ? name : PathOfDescriptor(directory);
    if (!identity->path.empty() && !name.empty() && name != "." && !name.starts_with('/'))
        identity->path = JoinPath(identity->path, name);
    identity->isProgram =
        S_ISREG(info.stx_mode) && (info.stx_mode & 0111) && identity->path == OwnProgram();
    return B_OK;
}

int64 DeviceOf(std::string path)
{
    NodeIdentity there;
    status_t error = IdentifyNode(AT_FDCWD, path, &there);
    // What is not there yet will lie on the file system of the folder in which it will be made.
    while ((error == B_ENTRY_NOT_FOUND || error == B_NOT_A_DIRECTORY) && path.size() > 1) {
        path = SplitPath(path).directory;
        error = IdentifyNode(AT_FDCWD, path, &there);
    }
    return error == B_OK ? there.device : 0;
}
