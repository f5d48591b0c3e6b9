#pragma once

#include "CpuTopology.h"

#include <functional>

namespace kernel {
// The system's numbers of the processors that a run uses, at least one and no more than most:
// those that are on and allowed, whole cores before their siblings, fast cores before slow ones,
// else by number. A run gives them up from the last to the second, so the first is processor 0 if
// it is among them, else one that has no switch, else simply the first.
[[nodiscard]] std::vector<int> ChooseProcessors(
    const CpuTopology& topology, const std::function<bool(int)>& isAllowed, size_t most);
} // namespace kernel
