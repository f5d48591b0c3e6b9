#include "engine/Benchmark.h"
#include "engine/IntegerKernels.h"
#include "engine/Sink.h"

#include <cstring>
#include <new>

namespace {

constexpr long kRounds = 400000;
constexpr size_t kBlockSize = 512;
constexpr long kBytes = kRounds * long(kBlockSize);
static_assert(TestNamed("Memory").work == kBytes / 1048576);

} // namespace

long AllocateAndClear(long rounds)
{
    long allocated = 0;
    for (long round = 0; round < rounds; round++) {
        char* block = new (std::nothrow) char[kBlockSize];
        if (!block)
            continue;
        memset(block, 0, kBlockSize);
        Sink(block);
        delete[] block;
        allocated++;
    }
    return allocated;
}

void Benchmark::RunMemory()
{
    long allocated = 0;
    Measure(
        TestNamed("Memory"), kRounds, [&] { allocated = AllocateAndClear(kRounds); },
        [&](Metric&) { return Unless(allocated == kRounds, "out of memory"); });
}
