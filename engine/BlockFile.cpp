#include "engine/BlockFile.h"

#include <OS.h>

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace {

// A run can be ended between these parts of a file, 1 MB each, however slow the disk is: a call of
// the kernel kit is a kill point.
void LetEndBefore(long block)
{
    if (block % 256 == 0)
        system_time();
}

} // namespace

BlockFile::~BlockFile()
{
    if (fStream)
        fclose(fStream);
    unlink(path.c_str());
}

bool BlockFile::Open(const char* mode)
{
    const bool isWritten = *mode == 'w';
    if (isWritten)
        unlink(path.c_str());
    if (isWritten || fIsMade)
        fStream = fopen(path.c_str(), isWritten ? "wbx" : mode);
    error = fStream ? 0 : !isWritten && !fIsMade ? ENOENT : errno;
    fIsMade = fIsMade || fStream;
    return fStream != nullptr;
}

bool BlockFile::Close()
{
    const bool isWritten = fclose(std::exchange(fStream, nullptr)) == 0;
    if (!isWritten)
        error = errno;
    return isWritten;
}

bool BlockFile::Write(long count)
{
    bool isDone = true;
    for (long block = 0; block < count; block++) {
        LetEndBefore(block);
        if (fwrite(fBlock, kBlockSize, 1, fStream) == 1)
            continue;
        error = isDone ? errno : error;
        isDone = false;
    }
    return isDone;
}

bool BlockFile::Read(long count)
{
    bool isDone = true;
    for (long block = 0; block < count; block++) {
        LetEndBefore(block);
        if (fread(fBlock, kBlockSize, 1, fStream) == 1)
            continue;
        error = !isDone ? error : ferror(fStream) ? errno : 0;
        isDone = false;
    }
    return isDone;
}
