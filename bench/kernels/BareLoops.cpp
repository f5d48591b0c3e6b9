#include "BareLoops.h"

#include <cstring>
#include <new>
#include <unistd.h>

namespace {

alignas(256) char gTexts[2][64] = { "Tarvex tests system resources of the BeOS.",
    "Tarvex tests system resources of the BeOS." };
char gFlags[8190];

// Not inlined, as in the test: the calls are its work.
[[gnu::noinline]] int Ackerman(int m, int n)
{
    for (; m != 0; m--)
        n = n == 0 ? 1 : Ackerman(m, n - 1);
    return n + 1;
}

void SievePass()
{
    for (char& flag : gFlags)
        flag = 1;
    for (int i = 0; i < 8190; i++) {
        const int p = 2 * i + 3;
        int k = i + p;
        if (!gFlags[i] || k > 8190)
            continue;
        for (; k <= 8190; k += p)
            asm volatile("" : "+r"(k));
        gFlags[i] = 0;
    }
    asm volatile("" : : "r"(gFlags) : "memory");
}

} // namespace

void bare::CopyText(long rounds)
{
    for (long i = 0; i < rounds; i++) {
        strcpy(gTexts[1], gTexts[0]);
        asm volatile("" : : : "memory");
    }
}

void bare::CompareText(long rounds)
{
    for (long i = 0; i < rounds; i++)
        asm volatile("" : : "r"(strcmp(gTexts[1], gTexts[0])) : "memory");
}

void bare::AllocateAndClear(long rounds)
{
    for (long i = 0; i < rounds; i++) {
        char* block = new (std::nothrow) char[512];
        if (block)
            memset(block, 0, 512);
        asm volatile("" : : "r"(block) : "memory");
        delete[] block;
    }
}

void bare::EvaluateAckerman(long rounds)
{
    for (long i = 0; i < rounds; i++) {
        int a = 3;
        asm volatile("" : "+r"(a));
        asm volatile("" : : "r"(Ackerman(a, 3)));
    }
}

void bare::SievePasses(long rounds)
{
    for (long i = 0; i < rounds; i++)
        SievePass();
}

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
