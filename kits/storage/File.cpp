#include "File.h"

#include "FileDescriptor.h"
#include "Locations.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

BFile::BFile(const char* path, uint32 openMode)
{
    SetTo(path, openMode);
}

status_t BFile::SetTo(const char* path, uint32 openMode)
{
    return path && *path ? Open(AT_FDCWD, LocalPath(path), openMode) : Fail(B_BAD_VALUE);
}

status_t BFile::SetTo(const entry_ref* ref, uint32 openMode)
{
    return SetTo(ref ? PathOfRef(*ref).c_str() : nullptr, openMode);
}

status_t BFile::SetTo(const BEntry* entry, uint32 openMode)
{
    if (!entry || entry->InitCheck() != B_OK)
        return Fail(B_BAD_VALUE);
    return Open(entry->fDirectory.Get(), entry->fName.c_str(), openMode);
}

status_t BFile::Open(int base, const char* path, uint32 openMode)
{
    // Not O_APPEND: with it the system writes at the end whatever position is asked for.
    const int flags = static_cast<int>(openMode & ~static_cast<uint32>(B_OPEN_AT_END)) | O_CLOEXEC;
    fMode = openMode;
    fWriteStatus = B_OK;
    status_t error = Take(openat(base, path, flags, 0666));
    if (error != B_OK && (openMode & O_ACCMODE) != B_READ_ONLY && !(openMode & B_ERASE_FILE))
        error = OpenOwnProgram(base, path, error);
    if (error != B_OK)
        return Fail(error);
    if (IsDirectory())
        return Fail(B_IS_A_DIRECTORY);
    if (openMode & B_OPEN_AT_END)
        Seek(0, SEEK_END);
    return B_OK;
}

status_t BFile::OpenOwnProgram(int base, const char* path, status_t error)
{
    // The system lets nobody write to a program that runs (ETXTBSY), root neither. Attributes and
    // resources are in the store, though, and a program keeps its settings with itself: so it is
    // opened, and only writing its bytes fails.
    struct stat own = {};
    struct stat wanted = {};
    if (stat("/proc/self/exe", &own) != 0 || fstatat(base, path, &wanted, 0) != 0
        || own.st_dev != wanted.st_dev || own.st_ino != wanted.st_ino)
        return error;
    fWriteStatus = error;
    return Take(openat(base, path, O_RDONLY | O_CLOEXEC));
}

bool BFile::IsWritable() const
{
    const uint32 access = fMode & O_ACCMODE;
    return InitCheck() == B_OK && (access == B_WRITE_ONLY || access == B_READ_WRITE);
}

namespace {

// Repeats a partial transfer until all is done, it gets nowhere or fails; the sum of what was
// moved, or the error where that is nothing.
template <typename Step>
ssize_t Transfer(size_t length, Step step)
{
    size_t done = 0;
    while (done < length) {
        const ssize_t moved = step(done);
        if (moved < 0 && errno == EINTR)
            continue;
        if (moved < 0 && done == 0)
            return StatusOfErrno();
        if (moved <= 0)
            break;
        done += static_cast<size_t>(moved);
    }
    return static_cast<ssize_t>(done);
}

} // namespace

ssize_t BFile::Read(void* buffer, size_t length)
{
    if (InitCheck() != B_OK)
        return B_NO_INIT;
    if (!buffer)
        return B_BAD_VALUE;
    return Transfer(length, [&](size_t done) {
        return read(Descriptor(), static_cast<char*>(buffer) + done, length - done);
    });
}

ssize_t BFile::Write(const void* buffer, size_t length)
{
    if (const status_t error = CanWrite(buffer); error != B_OK)
        return error;
    return Transfer(length, [&](size_t done) {
        return write(Descriptor(), static_cast<const char*>(buffer) + done, length - done);
    });
}

status_t BFile::CanWrite(const void* buffer) const
{
    if (InitCheck() != B_OK)
        return B_NO_INIT;
    return buffer ? fWriteStatus : B_BAD_VALUE;
}

off_t BFile::Seek(off_t offset, uint32 seekMode)
{
    if (InitCheck() != B_OK)
        return B_NO_INIT;
    const off_t position =
        seekMode <= SEEK_END ? lseek(Descriptor(), offset, static_cast<int>(seekMode)) : -1;
    return position < 0 ? static_cast<off_t>(B_BAD_VALUE) : position;
}
