#pragma once

#include "CpuTopology.h"
#include "OS.h"

namespace kernel {
// The platform's name for a processor, by its maker, family and model. For one that the list does
// not have: the maker's plain value, B_CPU_X86 for makers without one. B_CPU_ARM for every Arm; 0,
// which the platform has no name for, for kinds that came after it (POWER, z/Architecture).
[[nodiscard]] cpu_type CpuTypeOf(const CpuTopology& topology);
} // namespace kernel
