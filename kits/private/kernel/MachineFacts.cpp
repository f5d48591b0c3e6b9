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
    // Nobody has more of anything counted here, and a million times that still fits.
    constexpr long long kMost = 1LL << 43;
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

namespace {
constexpr char kFirmware[] = "/sys/class/dmi/id/";

// What virtual machines write into their firmware, of which real ones have nothing.
const struct {
    const char* words;
    const char* name;
} kFirmwareNames[] = {
    { "VMware", "VMware" },
    { "VirtualBox", "VirtualBox" },
    { "innotek", "VirtualBox" },
    { "Xen", "Xen" },
    { "KVM", "KVM" },
    { "QEMU", "QEMU" },
    { "Bochs", "Bochs" },
    { "Parallels", "Parallels" },
    { "BHYVE", "bhyve" },
    { "Google Compute Engine", "Google Compute Engine" },
    { "OpenStack", "OpenStack" },
    { "Apple Virtualization", "Apple Virtualization" },
};

// Makers that sell real machines with the same words in them.
const struct {
    const char* words;
    const char* name;
} kNamesOfBoth[] = {
    { "Microsoft Corporation", "Hyper-V" },
    { "Amazon EC2", "Amazon EC2" },
    { "Alibaba Cloud", "Alibaba Cloud" },
};

std::string FirmwareText(const SystemTree& tree)
{
    std::string text;
    for (const char* file : { "sys_vendor", "product_name", "board_vendor", "bios_vendor" })
        text += tree.Line(std::string(kFirmware) + file).value_or("") + "\n";
    return text;
}

template <typename Table>
std::optional<std::string> NameIn(const Table& table, const std::string& text)
{
    for (const auto& row : table) {
        if (text.find(row.words) != std::string::npos)
            return row.name;
    }
    return {};
}

// Of the systems that have a file for it; Xen's first domain is a guest too.
std::optional<std::string> NameInFiles(const SystemTree& tree)
{
    std::string text = tree.Line("/sys/hypervisor/type").value_or("") + "\n"
        + tree.Line("/proc/device-tree/hypervisor/compatible").value_or("");
    if (const auto record = tree.Text("/proc/sysinfo")) // z/Architecture
        text += FieldIn(*record, "VM00 Control Program").value_or("");
    static constexpr struct {
        const char* words;
        const char* name;
    } kNames[] = { { "xen", "Xen" }, { "kvm", "KVM" }, { "KVM", "KVM" }, { "z/VM", "z/VM" },
        { "vmware", "VMware" } };
    if (auto name = NameIn(kNames, text))
        return name;
    return Words(text).empty() ? std::nullopt : std::optional<std::string>("unknown kind");
}
} // namespace

std::optional<std::string> VirtualMachineOf(const SystemTree& tree)
{
    const std::string info = tree.Text("/proc/cpuinfo").value_or("");
    const auto flags = FieldIn(info, "flags");
    const std::vector<std::string_view> words = Words(flags.value_or(""));
    const bool hasFlag = std::find(words.begin(), words.end(), "hypervisor") != words.end();
    const std::string firmware = FirmwareText(tree);
    if (auto name = NameInFiles(tree))
        return name;
    if (auto name = NameIn(kFirmwareNames, firmware))
        return name;
    if (hasFlag)
        return NameIn(kNamesOfBoth, firmware).value_or("unknown kind");
    const bool isTold = flags || !Words(firmware).empty() || tree.Has("/proc/sysinfo");
    return isTold ? std::optional<std::string>("none") : std::nullopt;
}

std::optional<std::string> ContainerOf(const SystemTree& tree)
{
    if (auto name = tree.Line("/run/systemd/container"))
        return name;
    if (tree.Has("/run/.containerenv"))
        return "podman";
    if (tree.Has("/.dockerenv"))
        return "docker";
    return {};
}

namespace {
// The part numbers of Arm's own cores, from the main identification register of each one's
// technical reference manual.
const struct {
    int part;
    const char* name;
} kArmParts[] = {
    { 0xc07, "Cortex-A7" },
    { 0xc08, "Cortex-A8" },
    { 0xc09, "Cortex-A9" },
    { 0xc0f, "Cortex-A15" },
    { 0xd03, "Cortex-A53" },
    { 0xd04, "Cortex-A35" },
    { 0xd05, "Cortex-A55" },
    { 0xd07, "Cortex-A57" },
    { 0xd08, "Cortex-A72" },
    { 0xd09, "Cortex-A73" },
    { 0xd0a, "Cortex-A75" },
    { 0xd0b, "Cortex-A76" },
    { 0xd0c, "Neoverse-N1" },
    { 0xd0d, "Cortex-A77" },
    { 0xd40, "Neoverse-V1" },
    { 0xd41, "Cortex-A78" },
    { 0xd44, "Cortex-X1" },
    { 0xd46, "Cortex-A510" },
    { 0xd47, "Cortex-A710" },
    { 0xd48, "Cortex-X2" },
    { 0xd49, "Neoverse-N2" },
    { 0xd4d, "Cortex-A715" },
    { 0xd4e, "Cortex-X3" },
    { 0xd4f, "Neoverse-V2" },
    { 0xd80, "Cortex-A520" },
    { 0xd81, "Cortex-A720" },
    { 0xd82, "Cortex-X4" },
};

std::string ArmName(std::string_view implementer, std::string_view part)
{
    int number = 0;
    if (implementer == "0x41" && part.starts_with("0x"))
        std::from_chars(part.data() + 2, part.data() + part.size(), number, 16);
    for (const auto& row : kArmParts) {
        if (row.part == number)
            return row.name;
    }
    return PlainLine(
        "Arm, maker " + std::string(implementer) + ", part " + std::string(part.substr(0, 10)));
}

// Each kind once, in the order of their first processors.
std::string ArmNames(std::string_view info)
{
    constexpr std::string_view kMaker = "CPU implementer";
    std::vector<std::string> names;
    std::string text;
    for (size_t at; (at = info.find(kMaker)) != std::string_view::npos && names.size() < 8;) {
        info.remove_prefix(at);
        const std::string name = ArmName(FieldIn(info, kMaker).value_or("unknown"),
            FieldIn(info, "CPU part").value_or("unknown"));
        info.remove_prefix(kMaker.size());
        if (std::find(names.begin(), names.end(), name) != names.end())
            continue;
        names.push_back(name);
        text += (text.empty() ? "" : " + ") + name;
    }
    return text;
}

// z/Architecture: "version = FF,  identification = 0133E8,  machine = 3906".
std::string MachineNumber(std::string_view line)
{
    constexpr std::string_view kMachine = "machine = ";
    const size_t at = line.find(kMachine);
    if (at == std::string_view::npos)
        return "";
    return "machine " + std::string(line.substr(at + kMachine.size(), 8));
}
} // namespace

std::optional<std::string> ProcessorModelIn(std::string_view info)
{
    std::string name(FieldIn(info, "model name").value_or(""));
    if (name.empty() && FieldIn(info, "CPU implementer"))
        name = ArmNames(info);
    if (name.empty())
        name = FieldIn(info, "cpu").value_or(FieldIn(info, "uarch").value_or(""));
    if (name.empty())
        name = MachineNumber(FieldIn(info, "processor 0").value_or(""));
    name = PlainLine(name);
    return name.empty() ? std::nullopt : std::optional(std::move(name));
}
} // namespace kernel
