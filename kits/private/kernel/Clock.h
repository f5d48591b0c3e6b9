#pragma once

#include "SupportDefs.h"

namespace kernel {
// system_time() without being a kill point.
[[nodiscard]] bigtime_t Now();
} // namespace kernel
