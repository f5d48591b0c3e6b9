#include "ProcessorChoice.h"

#include <algorithm>
#include <tuple>

namespace kernel {
namespace {
bool IsBetter(const CpuProcessor& left, const CpuProcessor& right)
{
    return std::tie(left.sibling, right.capacity, right.maxClock, left.number)
        < std::tie(right.sibling, left.capacity, left.maxClock, right.number);
}
} // namespace

std::vector<int> ChooseProcessors(
    const CpuTopology& topology, const std::function<bool(int)>& isAllowed, size_t most)
{
    std::vector<CpuProcessor> usable;
    std::copy_if(topology.processors.begin(), topology.processors.end(), std::back_inserter(usable),
        [&](const CpuProcessor& processor) {
            return processor.isOnline && isAllowed(processor.number);
        });
    if (usable.empty())
        return { topology.processors.front().number };
    std::sort(usable.begin(), usable.end(), IsBetter);

    auto first = std::find_if(usable.begin(), usable.end(),
        [](const CpuProcessor& processor) { return processor.number == 0; });
    if (first == usable.end())
        first = std::find_if(usable.begin(), usable.end(),
            [](const CpuProcessor& processor) { return !processor.hasSwitch; });
    if (first != usable.end())
        std::rotate(usable.begin(), first, first + 1);

    std::vector<int> numbers;
    for (size_t i = 0; i < usable.size() && i < most; i++)
        numbers.push_back(usable[i].number);
    return numbers;
}
} // namespace kernel
