#include "results/CpuColor.h"

#include <algorithm>
#include <iterator>

rgb_color cpu_color[kNbrCpuColors];

void ResetCpuColors()
{
    constexpr rgb_color kColors[kNbrCpuColors] = {
        { 0, 0, 200, 0 },
        { 0, 178, 0, 0 },
        { 203, 102, 255, 0 },
        { 51, 203, 152, 0 },
        { 102, 203, 255, 0 },
        { 228, 0, 0, 0 },
        { 255, 152, 0, 0 },
        { 0, 255, 0, 0 },
    };
    std::copy(std::begin(kColors), std::end(kColors), cpu_color);
}
