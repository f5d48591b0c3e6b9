#include "ui/TestGroups.h"

#include "engine/Benchmark.h"
#include "sysinfo/LibSysInfo.h"

#include <algorithm>
#include <iterator>

const TestGroup kTestGroups[kNbrTestGroups] = {
    { "Graphics", "cpugraphics", 2000, 80, &Benchmark::graphics },
    { "Strings", "cpustring", 2001, 4, &Benchmark::strings },
    { "Memory", "cpumemory", 2002, 2, &Benchmark::memory },
    { "Savage", "cpusavage", 2003, 2, &Benchmark::savage },
    { "Ackerman", "cpuackerman", 2004, 2, &Benchmark::ackerman },
    { "Fourier", "cpufourier", 2008, 4, &Benchmark::fourier },
    { "Whetstone", "cpuwhetstone", 2006, 2, &Benchmark::whetstone },
    { "Sieve", "cpusieve", 2007, 4, &Benchmark::sieve },
    { "Input/Output", "disio", 3000, 8, &Benchmark::fileIO },
    { "LifeCycle", "disklifecycle", 3001, 11, &Benchmark::fileLifeCycle },
};

bool IsTestGroupMessage(uint32 what)
{
    return std::any_of(std::begin(kTestGroups), std::end(kTestGroups),
        [what](const TestGroup& group) { return group.what == what; });
}

bool SuitsGraphicsTests(const LibSysInfo& info)
{
    return info.screenWidth == 1024 && info.screenHeight == 768 && info.colorSpace == B_CMAP8;
}
