#include "DirectoryLock.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "ErrorCodes.h"
#include "Locations.h"
#include "Sqlite.h"

namespace store {

void ThrowErrno(const std::string& what)
{
    const int error = errno;
    throw Failure { StatusOfErrno(error), false, what + ": " + strerror(error) };
}

DirectoryLock::DirectoryLock(const std::string& path)
    : fDirectory(open(SplitPath(path).directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (!fDirectory.IsOpen())
        ThrowErrno("its folder cannot be opened");
    for (int tries = 0; flock(fDirectory.Get(), LOCK_EX | LOCK_NB) != 0; tries++) {
        if (tries == kMostWaits)
            throw Failure { B_BUSY, false, "another program has kept it for too long" };
        usleep(kWaitMicroseconds);
    }
}

} // namespace store
