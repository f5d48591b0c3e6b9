#pragma once

#include "SupportDefs.h"

namespace kernel {
// The reference clock of the running machine's bus in Hz as the processor tells it, 0 where it does
// not (older ones, most virtual machines).
[[nodiscard]] int64 ReadBusClock();
} // namespace kernel
