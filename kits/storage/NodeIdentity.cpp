#include "NodeIdentity.h"

#include <fcntl.h>
#include <sys/stat.h>

#include "ErrorCodes.h"
#include "Locations.h"

status_t IdentifyNode(int directory, const std::string& name, NodeIdentity* identity)
{
    struct statx info = {};
    const int flags = AT_SYMLINK_NOFOLLOW | (name.empty() ? AT_EMPTY_PATH : 0);
    const unsigned mask = STATX_TYPE | STATX_MODE | STATX_NLINK | STATX_INO | STATX_BTIME;
    if (statx(directory, name.c_str(), flags, mask, &info) != 0)
        return StatusOfErrno();
    identity->inode = info.stx_ino;
    identity->links = info.stx_nlink;
    identity->birth = 0;
    if (info.stx_mask & STATX_BTIME)
        identity->birth = int64(info.stx_btime.tv_sec) * 1'000'000'000 + info.stx_btime.tv_nsec;
    identity->isProgram = S_ISREG(info.stx_mode) && (info.stx_mode & 0111);
    identity->path = PathOfDescriptor(directory);
    if (!identity->path.empty() && !name.empty() && name != ".")
        identity->path = JoinPath(identity->path, name);
    return B_OK;
}
