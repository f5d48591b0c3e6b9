// Groups that this build leaves out: announced like the others, then skipped with a line on
// standard error.
#include "engine/Benchmark.h"

#include <cstdio>

namespace {

void SkipGroup(const char* name)
{
    fprintf(stderr, "<%s> is not built yet, skipped\n", name);
}

} // namespace

void Benchmark::RunGraphics()
{
    SkipGroup("Graphics");
}

void Benchmark::RunSavage()
{
    SkipGroup("Savage");
}

void Benchmark::RunDhrystone()
{
    SkipGroup("Dhrystone");
}

void Benchmark::RunFourier()
{
    SkipGroup("Fourier");
}

void Benchmark::RunWhetstone()
{
    SkipGroup("Whetstone");
}

void Benchmark::RunFileLifeCycle()
{
    SkipGroup("Disk LifeCycle");
}

void Benchmark::RunFileIO()
{
    SkipGroup("Disk Input/Output");
}
