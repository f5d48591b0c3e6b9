#include "MachineDetails.h"

#include "KillGuard.h"
#include "MachineFacts.h"
#include "Processors.h"
#include "SystemTree.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

namespace {
using kernel::SystemTree;

constexpr char kCpuFolder[] = "/sys/devices/system/cpu/";

std::string FolderOf(int number)
{
    return kCpuFolder + ("cpu" + std::to_string(number)) + "/";
}

std::optional<int> IdIn(const SystemTree& tree, const std::string& path)
{
    const auto id = kernel::WholeNumber<int>(tree.Text(path).value_or(""));
    return id && *id >= 0 ? id : std::nullopt; // -1: not told
}

// Clocks are in kHz there.
std::optional<uint64> HertzIn(const SystemTree& tree, const std::string& path)
{
    const auto kiloHertz = tree.Count(path);
    if (!kiloHertz || *kiloHertz == 0 || *kiloHertz > 1000000000)
        return {};
    return *kiloHertz * 1000;
}

std::vector<int> ReadSiblings(const SystemTree& tree, int number)
{
    const std::string topology = FolderOf(number) + "topology/";
    std::vector<int> siblings =
        kernel::ParseCpuList(tree.Text(topology + "thread_siblings_list").value_or(""));
    if (siblings.empty())
        siblings = kernel::ParseCpuMask(tree.Text(topology + "thread_siblings").value_or(""));
    std::sort(siblings.begin(), siblings.end());
    return siblings;
}

ProcessorDetails ReadProcessor(const SystemTree& tree, int number)
{
    const std::string clock = FolderOf(number) + "cpufreq/";
    ProcessorDetails processor;
    processor.number = number;
    processor.core = IdIn(tree, FolderOf(number) + "topology/core_id");
    processor.package = IdIn(tree, FolderOf(number) + "topology/physical_package_id");
    processor.siblings = ReadSiblings(tree, number);
    processor.lowestClock = HertzIn(tree, clock + "cpuinfo_min_freq");
    processor.highestClock = HertzIn(tree, clock + "cpuinfo_max_freq");
    processor.lowerLimit = HertzIn(tree, clock + "scaling_min_freq");
    processor.upperLimit = HertzIn(tree, clock + "scaling_max_freq");
    processor.clockDriver = tree.Line(clock + "scaling_driver");
    processor.governor = tree.Line(clock + "scaling_governor");
    processor.energyPreference = tree.Line(clock + "energy_performance_preference");
    return processor;
}

// The highest of all the machine's processors, used or not.
uint64 HighestCapacity(const SystemTree& tree)
{
    uint64 highest = 0;
    for (const std::string& name : tree.Names(kCpuFolder).value_or(std::vector<std::string>()))
        highest = std::max(highest, tree.Count(kCpuFolder + name + "/cpu_capacity").value_or(0));
    return highest;
}

// x86 lists both kinds. Others tell each processor's speed; the slow cores of such machines have
// less than half of the fastest's, while fast ones of one kind may differ by a tenth or two.
void FindKinds(const SystemTree& tree, std::vector<ProcessorDetails>& processors)
{
    const std::vector<int> fast =
        kernel::ParseCpuList(tree.Text("/sys/devices/cpu_core/cpus").value_or(""));
    const std::vector<int> slow =
        kernel::ParseCpuList(tree.Text("/sys/devices/cpu_atom/cpus").value_or(""));
    const uint64 highest = HighestCapacity(tree);
    bool hasSlowOnes = !slow.empty();
    for (ProcessorDetails& processor : processors) {
        const auto isIn = [&](const std::vector<int>& list) {
            return std::find(list.begin(), list.end(), processor.number) != list.end();
        };
        const auto capacity = tree.Count(FolderOf(processor.number) + "cpu_capacity");
        if (isIn(slow) || (!isIn(fast) && capacity && *capacity < highest * 3 / 4))
            processor.kind = CoreKind::kEfficiency;
        else if (isIn(fast) || capacity)
            processor.kind = CoreKind::kPerformance;
        hasSlowOnes = hasSlowOnes || processor.kind == CoreKind::kEfficiency;
    }
    for (ProcessorDetails& processor : processors) {
        if (!hasSlowOnes)
            processor.kind.reset();
    }
}

// The value of a shell assignment: quotes of either kind, and a backslash before what the shell
// would read otherwise.
std::string Unquoted(std::string_view text)
{
    std::string value;
    char quote = 0;
    for (size_t i = 0; i < text.size(); i++) {
        const char c = text[i];
        if (quote ? c == quote : c == '"' || c == '\'')
            quote = quote ? 0 : c;
        else if (c == '\\' && quote != '\'' && i + 1 < text.size())
            value += text[++i];
        else
            value += c;
    }
    return value;
}

std::optional<std::string> ReadDistribution(const SystemTree& tree)
{
    std::optional<std::string> text = tree.Text("/etc/os-release");
    if (!text)
        text = tree.Text("/usr/lib/os-release");
    const std::string all = text.value_or("");
    const auto value = kernel::FieldIn(all, "PRETTY_NAME", '=');
    std::string name = kernel::PlainLine(Unquoted(value.value_or("")));
    return name.empty() ? std::nullopt : std::optional(std::move(name));
}

// The text of /proc/version names who built the kernel and where; what follows "#" does not.
void ReadKernel(const SystemTree& tree, MachineDetails& details)
{
    details.kernelRelease = tree.Line("/proc/sys/kernel/osrelease");
    details.kernelVersion = tree.Line("/proc/sys/kernel/version");
    const std::string all = tree.Text("/proc/version").value_or("");
    const std::vector<std::string_view> words = kernel::Words(all);
    if (!details.kernelRelease && words.size() > 2 && words[1] == "version")
        details.kernelRelease = kernel::PlainLine(words[2]);
    const size_t start = all.find(" #");
    if (!details.kernelVersion && start != std::string::npos)
        details.kernelVersion = kernel::PlainLine(all.substr(start));
}

std::optional<uint64> ReadMemory(const SystemTree& tree)
{
    const std::string text = tree.Text("/proc/meminfo").value_or("");
    const auto words = kernel::Words(kernel::FieldIn(text, "MemTotal").value_or(""));
    const auto kilobytes = kernel::WholeNumber<uint64>(words.empty() ? "" : words[0]);
    if (!kilobytes || *kilobytes > uint64 { 1 } << 50)
        return {};
    return *kilobytes * 1024;
}
} // namespace

MachineDetails ReadMachineDetails()
{
    const KillGuard guard;
    const auto machine = kernel::Processors::Get();
    const SystemTree tree(machine->Root());
    MachineDetails details;
    ReadKernel(tree, details);
    details.distribution = ReadDistribution(tree);
    details.processorModel = kernel::ProcessorModelIn(tree.Text("/proc/cpuinfo").value_or(""));
    details.memory = ReadMemory(tree);
    details.virtualMachine = kernel::VirtualMachineOf(tree);
    details.container = kernel::ContainerOf(tree);
    for (const int number : machine->All())
        details.processors.push_back(ReadProcessor(tree, number));
    FindKinds(tree, details.processors);
    return details;
}

std::optional<std::string> CommonText(
    const MachineDetails& details, std::optional<std::string> ProcessorDetails::*field)
{
    std::optional<std::string> common;
    for (const ProcessorDetails& processor : details.processors) {
        if (!(processor.*field) || (common && common != processor.*field))
            return {};
        common = processor.*field;
    }
    return common;
}

namespace {
// A path as the list of mounts has it: "\040" for a blank.
std::string WithoutOctals(std::string_view text)
{
    std::string path;
    while (!text.empty()) {
        int code = 0;
        const bool isCode = text[0] == '\\' && text.size() > 3
            && std::from_chars(text.data() + 1, text.data() + 4, code, 8).ptr == text.data() + 4;
        path += isCode ? static_cast<char>(code) : text[0];
        text.remove_prefix(isCode ? 4 : 1);
    }
    return path;
}

bool IsBelow(const std::string& path, const std::string& folder)
{
    return folder == "/" || path == folder || path.starts_with(folder + "/");
}

// "36 35 98:0 /root /mount/point options optional... - type source options"
bool ParseMount(std::string_view line, std::string& point, FileSystemDetails& details)
{
    const std::vector<std::string_view> words = kernel::Words(line);
    const auto dash = std::find(words.begin(), words.end(), "-");
    if (words.end() - dash < 3 || dash - words.begin() < 6)
        return false;
    point = WithoutOctals(words[4]);
    details.type = kernel::PlainLine(dash[1]);
    const std::string_view type = dash[1], source = dash[2];
    details.isInMemory = type == "tmpfs" || type == "ramfs" || type == "devtmpfs"
        || source.starts_with("/dev/ram") || source.starts_with("/dev/zram");
    return true;
}
} // namespace

std::optional<FileSystemDetails> FileSystemOf(const std::string& path)
{
    const KillGuard guard;
    const kernel::SystemTree tree(kernel::Processors::Get()->Root());
    const std::string mounts = tree.Text("/proc/self/mountinfo").value_or("");
    char real[PATH_MAX];
    if (!realpath(path.c_str(), real))
        return {};
    std::optional<FileSystemDetails> found;
    std::string best, point;
    FileSystemDetails details;
    for (std::string_view rest = mounts; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        // Of two at the same place the later one hides the other.
        if (ParseMount(line, point, details) && IsBelow(real, point)
            && point.size() >= best.size()) {
            best = point;
            found = details;
        }
    }
    return found;
}
