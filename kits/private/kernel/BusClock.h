#pragma once

#include "SupportDefs.h"

namespace kernel {
// The reference clock of the running machine's bus in Hz as an x86 processor tells it, 0 where it
// does not (older ones, most virtual machines). Processors of other kinds have no such word, and
// the file that asks them is one of its own.
[[nodiscard]] int64 ReadBusClock();
} // namespace kernel
