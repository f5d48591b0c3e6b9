// The task of tarvex-run that measures.
#pragma once

#include "console/RunOptions.h"

// Measures what the options ask for, or what is missing of the run whose journal they name. Prints
// the result on standard output and writes the output file; progress and warnings go to standard
// error. Returns an ExitStatus.
[[nodiscard]] int RunTask(RunOptions options);
