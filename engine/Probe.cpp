#include "engine/Probe.h"

#include "engine/Sink.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace {

// A round is short beside a scheduler's slice, and long beside the clock's call.
constexpr int kSteps = 80000;
constexpr int kRounds = 3;

constexpr int kSteadyProbes = 8; // one after the other without a better one
constexpr double kStillBetter = 0.99;
constexpr double kLongestWait = 0.2;

// Six additions that do not wait for each other: more than one hardware thread's share of a core
// that has to be divided, and nothing that depends on memory.
[[gnu::noinline]] void AddAlong(int steps)
{
    uint64_t a = 0;
    uint64_t b = 0;
    uint64_t c = 0;
    uint64_t d = 0;
    uint64_t e = 0;
    uint64_t f = 0;
    for (int step = 0; step < steps; step++) {
        a++;
        b++;
        c++;
        d++;
        e++;
        f++;
        asm volatile("" : "+r"(a), "+r"(b), "+r"(c), "+r"(d), "+r"(e), "+r"(f));
    }
}

double Now()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double>(time).count();
}

double RoundSeconds()
{
    const double start = Now();
    AddAlong(kSteps);
    return Now() - start;
}

} // namespace

double ProbeSeconds()
{
    double best = RoundSeconds();
    for (int round = 1; round < kRounds; round++)
        best = std::min(best, RoundSeconds());
    return best;
}

void WaitForSteadyClock()
{
    const double start = Now();
    double best = ProbeSeconds();
    for (int steady = 0; steady < kSteadyProbes && Now() - start < kLongestWait; steady++) {
        const double probe = ProbeSeconds();
        if (probe >= best * kStillBetter)
            continue;
        best = probe;
        steady = 0;
    }
}
