// What made this program, as a run's record says it.
#pragma once

#include "results/RunRecord.h"

// All of it is known when the program is built: the flags are those of the kernels, in the order of
// the compiler's command line, of which the last one counts.
[[nodiscard]] BuildDetails ThisBuild();
