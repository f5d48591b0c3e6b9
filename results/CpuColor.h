// The colours of the comparison: one for each processor count.
#pragma once

#include <GraphicsDefs.h>

#include <array>

constexpr int32 kNbrCpuColors = 8;

// Of 1 to 8 processors. Shared by chart and legend, changed by the colour chooser; used with the
// comparison window locked.
extern std::array<rgb_color, kNbrCpuColors> cpu_color;

// Gives them their first values again, with which every comparison window opens.
void ResetCpuColors();
