// The colours of the comparison: one for each processor count.
#pragma once

#include <GraphicsDefs.h>

constexpr int32 kNbrCpuColors = 8;

// Of 1 to 8 processors. Shared by chart and legend, changed by the colour chooser; used with the
// comparison window locked.
extern rgb_color cpu_color[kNbrCpuColors];

// Gives them the values with which every comparison window opens.
void ResetCpuColors();
