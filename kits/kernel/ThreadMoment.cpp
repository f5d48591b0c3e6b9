#include "ThreadMoment.h"

#include "KillGuard.h"
#include "Processors.h"
#include "SystemTree.h"

#include <algorithm>
#include <ctime>
#include <sched.h>

namespace {
using kernel::SystemTree;

double SecondsOf(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

// "used waited slices", the first two in nanoseconds.
std::optional<double> ReadWaited(const SystemTree& tree)
{
    const std::string text = tree.Text("/proc/thread-self/schedstat").value_or("");
    const std::vector<std::string_view> words = kernel::Words(text);
    const auto waited = kernel::WholeNumber<uint64>(words.size() > 1 ? words[1] : "");
    return waited ? std::optional(static_cast<double>(*waited) / 1e9) : std::nullopt;
}

std::optional<uint64> ReadThrottles(const SystemTree& tree, int processor)
{
    const std::string folder =
        "/sys/devices/system/cpu/cpu" + std::to_string(processor) + "/thermal_throttle/";
    const auto core = tree.Count(folder + "core_throttle_count");
    const auto package = tree.Count(folder + "package_throttle_count");
    return core || package ? std::optional(core.value_or(0) + package.value_or(0)) : std::nullopt;
}
} // namespace

ThreadMoment ReadThreadMoment(std::optional<int> processor)
{
    const KillGuard guard;
    const SystemTree tree(kernel::Processors::Get()->Root());
    ThreadMoment moment;
    moment.processor = processor.value_or(std::max(sched_getcpu(), 0));
    moment.throttles = ReadThrottles(tree, moment.processor);
    moment.waited = ReadWaited(tree);
    const double own = SecondsOf(CLOCK_THREAD_CPUTIME_ID);
    moment.others = SecondsOf(CLOCK_PROCESS_CPUTIME_ID) - own;
    return moment;
}

ThreadChange ChangeBetween(const ThreadMoment& before, const ThreadMoment& after)
{
    ThreadChange change;
    if (before.waited && after.waited) {
        const double others = std::max(after.others - before.others, 0.0);
        change.waited = std::max(*after.waited - *before.waited - others, 0.0);
    }
    change.isThrottled = before.processor == after.processor && before.throttles && after.throttles
        && *after.throttles > *before.throttles;
    return change;
}
