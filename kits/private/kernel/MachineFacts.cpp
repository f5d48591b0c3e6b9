#include "MachineFacts.h"

#include "SystemTree.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <regex>
#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

namespace kernel {
namespace {
// The number after a name at the start of a line, 0 if there is none.
int64 LineNumber(const std::string& text, const std::string& name)
{
    size_t position = text.starts_with(name) ? 0 : text.find("\n" + name);
    if (position == std::string::npos)
        return 0;
    position = text.find(name, position) + name.size();
    constexpr long long kMost = 1LL << 50; // nobody has more of anything counted here
    return std::clamp(NumberAt(text.substr(position, 40), 0), 0LL, kMost);
}

std::string DateText(const std::string& month, const std::string& day, const std::string& year)
{
    char text[16];
    snprintf(text, sizeof(text), "%.3s %2d %.4s", month.c_str(), atoi(day.c_str()), year.c_str());
    return text;
}
} // namespace

KernelVersion ParseKernelVersion(std::string_view text)
{
    static const char* const kMonths[] = { "Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug",
        "Sep", "Oct", "Nov", "Dec" };
    static const std::regex kName(R"(^(\S+) version (\S+))");
    static const std::regex kDateAndTime(
        R"(([A-Z][a-z]{2}) +(\d\d?) (\d\d:\d\d:\d\d) (?:\S+ )?(\d{4})\b)");
    static const std::regex kDateOnly(R"(\((\d{4})-(\d\d)-(\d\d)\))");
    // std::regex takes some stack for each character, and the text is one line of about 200.
    const std::string bounded(text.substr(0, 1024));
    KernelVersion version { "Linux", "", "" };
    std::smatch match;
    if (std::regex_search(bounded, match, kName))
        version.name = match.str(1) + " " + match.str(2);
    if (std::regex_search(bounded, match, kDateAndTime)) {
        version.buildDate = DateText(match.str(1), match.str(2), match.str(4));
        version.buildTime = match.str(3);
    } else if (std::regex_search(bounded, match, kDateOnly)) {
        const int month = atoi(match.str(2).c_str());
        if (month >= 1 && month <= 12)
            version.buildDate = DateText(kMonths[month - 1], match.str(3), match.str(1));
    }
    return version;
}

MachineFacts ReadMachineFacts(const std::string& root)
{
    MachineFacts facts;
    facts.version = ParseKernelVersion(ReadText(root + "/proc/version"));
    const std::string memory = ReadText(root + "/proc/meminfo");
    int64 available = LineNumber(memory, "MemAvailable:");
    if (available == 0) // an old kernel
        available = LineNumber(memory, "MemFree:") + LineNumber(memory, "Buffers:")
            + LineNumber(memory, "Cached:");
    const int64 total = LineNumber(memory, "MemTotal:");
    facts.totalBytes = total * 1024;
    facts.usedBytes = std::max<int64>(0, total - available) * 1024;
    facts.bootTime = LineNumber(ReadText(root + "/proc/stat"), "btime ") * 1000000;
    return facts;
}

namespace {
const struct {
    const char* vendor;
    cpu_type plain;
} kMakers[] = {
    { "GenuineIntel", B_CPU_INTEL_X86 },
    { "AuthenticAMD", B_CPU_AMD_X86 },
    { "CyrixInstead", B_CPU_CYRIX_X86 },
    { "CentaurHauls", B_CPU_X86 },
    { "RiseRiseRise", B_CPU_RISE_X86 },
};

// Each is told by the value that its maker's base, family and model make up.
const cpu_type kModels[] = {
    B_CPU_INTEL_PENTIUM,
    B_CPU_INTEL_PENTIUM75,
    B_CPU_INTEL_PENTIUM_486_OVERDRIVE,
    B_CPU_INTEL_PENTIUM_MMX,
    B_CPU_INTEL_PENTIUM_MMX_MODEL_8,
    B_CPU_INTEL_PENTIUM75_486_OVERDRIVE,
    B_CPU_INTEL_PENTIUM_PRO,
    B_CPU_INTEL_PENTIUM_II_MODEL_3,
    B_CPU_INTEL_PENTIUM_II_MODEL_5,
    B_CPU_INTEL_CELERON,
    B_CPU_INTEL_PENTIUM_III,
    B_CPU_AMD_K5_MODEL0,
    B_CPU_AMD_K5_MODEL1,
    B_CPU_AMD_K5_MODEL2,
    B_CPU_AMD_K5_MODEL3,
    B_CPU_AMD_K6_MODEL6,
    B_CPU_AMD_K6_MODEL7,
    B_CPU_AMD_K6_MODEL8,
    B_CPU_AMD_K6_MODEL9,
    B_CPU_CYRIX_GXm,
    B_CPU_CYRIX_6x86MX,
    B_CPU_IDT_WINCHIP_C6,
    B_CPU_IDT_WINCHIP_2,
    B_CPU_RISE_mP6,
};
} // namespace

cpu_type CpuTypeOf(const CpuTopology& topology)
{
    if (topology.instructions != InstructionSet::kX86)
        return topology.instructions == InstructionSet::kArm ? B_CPU_ARM : cpu_type {};
    const auto maker = std::find_if(std::begin(kMakers), std::end(kMakers),
        [&](const auto& row) { return row.vendor == topology.vendor; });
    if (maker == std::end(kMakers))
        return B_CPU_X86;
    // Larger families and models would run into each other's digits.
    if (topology.family < 0 || topology.family > 15 || topology.model < 0 || topology.model > 15)
        return maker->plain;
    const int base = 0x1000 + 0x100 * static_cast<int>(maker - std::begin(kMakers));
    const auto model = std::find(
        std::begin(kModels), std::end(kModels), base + 0x10 * topology.family + topology.model);
    return model == std::end(kModels) ? maker->plain : *model;
}

// The processor is asked by an instruction that only x86 has.
#if defined(__x86_64__) || defined(__i386__)
int64 ReadBusClock()
{
    constexpr unsigned kFrequencyLeaf = 0x16;
    unsigned baseMHz, highestMHz, busMHz, unused;
    if (!__get_cpuid(kFrequencyLeaf, &baseMHz, &highestMHz, &busMHz, &unused))
        return 0;
    return int64 { busMHz & 0xffff } * 1000000;
}
#else
int64 ReadBusClock()
{
    return 0;
}
#endif
} // namespace kernel
