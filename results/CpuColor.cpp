#include "results/CpuColor.h"

namespace {

constexpr std::array<rgb_color, kNbrCpuColors> kColors { {
    { 0, 0, 200, 0 },
    { 0, 178, 0, 0 },
    { 203, 102, 255, 0 },
    { 51, 203, 152, 0 },
    { 102, 203, 255, 0 },
    { 228, 0, 0, 0 },
    { 255, 152, 0, 0 },
    { 0, 255, 0, 0 },
} };

} // namespace

std::array<rgb_color, kNbrCpuColors> cpu_color = kColors;

void ResetCpuColors()
{
    cpu_color = kColors;
}
