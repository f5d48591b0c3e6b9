#include "FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

FileDescriptor::FileDescriptor(const FileDescriptor& other)
    // The copy shares the place in the file with the original, as duplicates do.
    : fDescriptor(other.IsOpen() ? fcntl(other.fDescriptor, F_DUPFD_CLOEXEC, 0) : -1)
{
}

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept
    : fDescriptor(std::exchange(other.fDescriptor, -1))
{
}

FileDescriptor& FileDescriptor::operator=(FileDescriptor other) noexcept
{
    std::swap(fDescriptor, other.fDescriptor);
    return *this;
}

FileDescriptor::~FileDescriptor()
{
    if (fDescriptor >= 0)
        close(fDescriptor);
}

status_t StatusOfErrno(int error)
{
    switch (error) {
        case 0: return B_OK;
        case ENOENT: return B_ENTRY_NOT_FOUND;
        case EEXIST: return B_FILE_EXISTS;
        case ENOTDIR: return B_NOT_A_DIRECTORY;
        case EISDIR: return B_IS_A_DIRECTORY;
        case ENOTEMPTY: return B_DIRECTORY_NOT_EMPTY;
        case ENAMETOOLONG: return B_NAME_TOO_LONG;
        case ELOOP: return B_LINK_LIMIT;
        case EXDEV: return B_CROSS_DEVICE_LINK;
        // For the user a quota or a limit that is reached is a full disk.
        case ENOSPC:
        case EDQUOT:
        case EFBIG: return B_DEVICE_FULL;
        case EROFS: return B_READ_ONLY_DEVICE;
        case EACCES:
        case EPERM: return B_PERMISSION_DENIED;
        case EBUSY:
        case ETXTBSY: return B_BUSY;
        case EINVAL: return B_BAD_VALUE;
        case ENOMEM: return B_NO_MEMORY;
        case EMFILE:
        case ENFILE: return B_NO_MORE_FDS;
        case EBADF: return B_FILE_ERROR;
        case EIO: return B_IO_ERROR;
        case EPIPE: return B_BUSTED_PIPE;
        case ENOTSUP: return B_UNSUPPORTED;
        case EINTR: return B_INTERRUPTED;
        default: return B_ERROR;
    }
}

status_t StatusOfErrno()
{
    return StatusOfErrno(errno);
}
