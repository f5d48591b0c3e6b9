#include "KillGuard.h"
#include "MachineFacts.h"
#include "OS.h"
#include "Processors.h"

#include <algorithm>

namespace {
constexpr int64 kMostPages = 524287; // their bytes still fit a signed 32-bit number

template <size_t size>
void CopyText(char (&field)[size], const std::string& text)
{
    field[text.copy(field, size - 1)] = 0;
}

void FillProcessors(system_info& info, const kernel::Processors& processors)
{
    const kernel::CpuTopology& topology = processors.Topology();
    const auto activeTimes = kernel::ReadActiveTimes(processors.Root());
    info.cpu_count = static_cast<int32>(processors.Numbers().size());
    for (size_t i = 0; i < processors.Numbers().size(); i++) {
        const auto time = activeTimes.find(processors.Numbers()[i]);
        info.cpu_infos[i].active_time = time == activeTimes.end() ? 0 : time->second;
    }
    info.cpu_type = kernel::CpuTypeOf(topology);
    info.cpu_revision = topology.stepping;
    info.cpu_clock_speed = topology.clock;
    // The processor that runs this tells it, not the machine below another root.
    info.bus_clock_speed = processors.Root().empty() ? kernel::ReadBusClock() : 0;
}
} // namespace

status_t get_system_info(system_info* info)
{
    CheckKilled();
    if (!info)
        return B_BAD_VALUE;
    const auto processors = kernel::Processors::Get();
    const kernel::MachineFacts facts = kernel::ReadMachineFacts(processors->Root());
    *info = {};
    FillProcessors(*info, *processors);
    info->boot_time = facts.bootTime;
    info->platform_type = B_AT_CLONE_PLATFORM;
    info->max_pages = static_cast<int32>(std::min(facts.totalBytes / B_PAGE_SIZE, kMostPages));
    info->used_pages =
        static_cast<int32>(std::min<int64>(facts.usedBytes / B_PAGE_SIZE, info->max_pages));
    CopyText(info->kernel_name, facts.version.name);
    CopyText(info->kernel_build_date, facts.version.buildDate);
    CopyText(info->kernel_build_time, facts.version.buildTime);
    return B_OK;
}
