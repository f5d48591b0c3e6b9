#include "FileDescriptor.h"

#include <fcntl.h>
#include <unistd.h>

FileDescriptor::FileDescriptor(const FileDescriptor& other)
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
