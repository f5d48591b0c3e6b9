#include "engine/BlockFile.h"

#include <unistd.h>
#include <utility>

BlockFile::~BlockFile()
{
    if (fStream)
        fclose(fStream);
    unlink(path.c_str());
}

bool BlockFile::Open(const char* mode)
{
    fStream = fopen(path.c_str(), mode);
    return fStream != nullptr;
}

void BlockFile::Close()
{
    fclose(std::exchange(fStream, nullptr));
}

void BlockFile::Write(long count)
{
    for (long block = 0; block < count; block++)
        fwrite(fBlock, kBlockSize, 1, fStream);
}

void BlockFile::Read(long count)
{
    for (long block = 0; block < count; block++)
        (void)fread(fBlock, kBlockSize, 1, fStream);
}
