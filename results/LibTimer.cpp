#include "results/LibTimer.h"

#include <cinttypes>
#include <cstdio>

namespace {

// Divided as a double: a float holds whole microseconds up to 17 seconds only.
float Seconds(bigtime_t micros)
{
    return static_cast<float>(static_cast<double>(micros) / 1'000'000);
}

} // namespace

void LibTimer::Start()
{
    start = system_time();
}

float LibTimer::Stop()
{
    stop = system_time();
    return Seconds(stop - start);
}

float LibTimer::Elapsed() const
{
    return Seconds(system_time() - start);
}

void LibTimer::PrintToStream() const
{
    fprintf(stderr, "LibTimer:: start %" PRId64 ", stop %" PRId64 "\n", start, stop);
}
