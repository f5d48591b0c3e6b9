#pragma once

#include "kits/kernel/CpuTopology.h"
#include "OS.h"

namespace kernel {
// The platform's name for a processor, by its maker, family and model. For one that the list does
// not have: the maker's plain value, B_CPU_X86 for makers without one.
[[nodiscard]] cpu_type CpuTypeOf(const CpuTopology& topology);
} // namespace kernel
