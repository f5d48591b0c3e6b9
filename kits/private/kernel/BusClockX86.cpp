#include "BusClock.h"

#include <cpuid.h>

namespace kernel {
int64 ReadBusClock()
{
    constexpr unsigned kFrequencyLeaf = 0x16;
    unsigned baseMHz, highestMHz, busMHz, unused;
    if (!__get_cpuid(kFrequencyLeaf, &baseMHz, &highestMHz, &busMHz, &unused))
        return 0;
    return int64 { busMHz & 0xffff } * 1000000;
}
} // namespace kernel
