#include "CpuType.h"

#include <algorithm>
#include <iterator>

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

namespace kernel {
cpu_type CpuTypeOf(const CpuTopology& topology)
{
    if (topology.instructions != InstructionSet::X86)
        return topology.instructions == InstructionSet::Arm ? B_CPU_ARM : cpu_type {};
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
} // namespace kernel
