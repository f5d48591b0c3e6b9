#include "BareLoops.h"

#include <unistd.h>

namespace {

char gBlock[4096];

} // namespace

void bare::CreateFiles(const char* prefix, long rounds)
{
    char path[256];
    for (int i = 0; i < rounds; i++) {
        snprintf(path, sizeof path, "%s.%d", prefix, i);
        if (FILE* file = fopen(path, "w"))
            fclose(file);
    }
}

void bare::RemoveFiles(const char* prefix, long rounds)
{
    char path[256];
    for (int i = 0; i < rounds; i++) {
        snprintf(path, sizeof path, "%s.%d", prefix, i);
        unlink(path);
    }
}

void bare::WriteBlocks(FILE* file, long rounds)
{
    for (long i = 0; i < rounds; i++)
        fwrite(gBlock, sizeof gBlock, 1, file);
}

void bare::ReadBlocks(FILE* file, long rounds)
{
    for (long i = 0; i < rounds; i++)
        (void)fread(gBlock, sizeof gBlock, 1, file);
}
