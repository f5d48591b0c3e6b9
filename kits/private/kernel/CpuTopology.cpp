#include "CpuTopology.h"

#include "SystemTree.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <initializer_list>
#include <sstream>
#include <unistd.h>

namespace kernel {
namespace {
std::string CpuFolder(const std::string& root)
{
    return root + "/sys/devices/system/cpu/";
}

std::string ProcessorFolder(const std::string& root, int number)
{
    return CpuFolder(root) + "cpu" + std::to_string(number) + "/";
}

bool Contains(const std::vector<int>& numbers, int number)
{
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

// Parses the whole text; -1 if it is no number of a processor.
int ProcessorNumber(std::string_view text)
{
    int number;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && number >= 0 && number <= kMaxProcessorNumber ? number : -1;
}

// /proc/cpuinfo: the numbers of the processors on, and the fields of the first.
struct CpuInfoText {
    std::vector<int> numbers;
    std::map<std::string, std::string, std::less<>> fields;

    bool Has(std::string_view name) const { return fields.find(name) != fields.end(); }
    // Of the first of these names that there is: each kind of processor has its own.
    std::string Field(std::initializer_list<std::string_view> names) const
    {
        for (const std::string_view name : names) {
            if (const auto found = fields.find(name); found != fields.end())
                return found->second;
        }
        return "";
    }
    long long Number(std::initializer_list<std::string_view> names) const
    {
        return NumberAt(Field(names), 0);
    }
};

CpuInfoText ReadCpuInfo(const std::string& root)
{
    CpuInfoText info;
    std::istringstream lines(ReadText(root + "/proc/cpuinfo"));
    for (std::string line; std::getline(lines, line);) {
        const size_t colon = line.find(':');
        if (colon == std::string::npos)
            continue;
        const std::string_view all = line;
        const std::string_view name = Trimmed(all.substr(0, colon));
        const std::string_view value = Trimmed(all.substr(colon + 1));
        if (name == "processor" && ProcessorNumber(value) >= 0)
            info.numbers.push_back(ProcessorNumber(value));
        info.fields.emplace(name, value); // keeps the first
    }
    return info;
}

std::vector<int> PresentProcessors(const std::string& root, const CpuInfoText& info)
{
    std::vector<int> numbers;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(CpuFolder(root), error), end; entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename();
        if (name.starts_with("cpu") && ProcessorNumber(name.substr(3)) >= 0)
            numbers.push_back(ProcessorNumber(name.substr(3)));
    }
    // Some containers have no /sys; then those that are on are all that is known. One there always
    // is.
    if (numbers.empty())
        numbers = info.numbers;
    if (numbers.empty())
        numbers.push_back(0);
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

// By its own switch where it has one; without, the list and what runs say so.
bool IsOnline(const std::string& root, int number, const CpuInfoText& info)
{
    const std::string state = ReadText(ProcessorSwitchPath(root, number));
    if (!state.empty())
        return state[0] != '0';
    const std::vector<int> online = ParseCpuList(ReadText(CpuFolder(root) + "online"));
    if (!online.empty())
        return Contains(online, number);
    return info.numbers.empty() || Contains(info.numbers, number);
}

// All processors of its core. Core numbers would not do: they repeat within a package.
std::vector<int> SiblingsOf(const std::string& root, int number)
{
    const std::string topology = ProcessorFolder(root, number) + "topology/";
    const std::vector<int> listed = ParseCpuList(ReadText(topology + "thread_siblings_list"));
    return listed.empty() ? ParseCpuMask(ReadText(topology + "thread_siblings")) : listed;
}

void CountSiblings(const std::string& root, std::vector<CpuProcessor>& processors)
{
    for (CpuProcessor& processor : processors) {
        const std::vector<int> siblings = SiblingsOf(root, processor.number);
        for (const CpuProcessor& other : processors) {
            if (other.number < processor.number && other.isOnline
                && Contains(siblings, other.number))
                processor.sibling++;
        }
    }
}

CpuProcessor ReadProcessor(const std::string& root, int number, const CpuInfoText& info)
{
    const std::string folder = ProcessorFolder(root, number);
    CpuProcessor processor;
    processor.number = number;
    processor.isOnline = IsOnline(root, number, info);
    processor.hasSwitch = access(ProcessorSwitchPath(root, number).c_str(), F_OK) == 0;
    processor.capacity = std::max(0LL, NumberAt(ReadText(folder + "cpu_capacity"), 0));
    const long long kiloHertz = NumberAt(ReadText(folder + "cpufreq/cpuinfo_max_freq"), 0);
    // In Hz; a terahertz at most, so that what a broken firmware claims does not overflow.
    processor.maxClock = std::clamp(kiloHertz, 0LL, 1000000000LL) * 1000;
    return processor;
}

InstructionSet InstructionSetOf(const CpuInfoText& info)
{
    if (info.Has("CPU implementer"))
        return InstructionSet::kArm;
    return info.fields.empty() || info.Has("cpu family") ? InstructionSet::kX86
                                                         : InstructionSet::kOther;
}

int64 HertzOf(std::string_view megaHertz)
{
    double value = 0;
    std::from_chars(megaHertz.data(), megaHertz.data() + megaHertz.size(), value);
    return value > 0 && value < 1e6 ? std::llround(value * 1e6) : 0;
}

int64 ChooseClock(const CpuTopology& topology, const CpuInfoText& info)
{
    // The maker's number first: it is the same at each start, while what is measured goes up and
    // down with heat and load, and the highest clock is held for moments only.
    if (const int64 printed = ClockInModelName(topology.modelName); printed > 0)
        return printed;
    int64 highest = 0;
    for (const CpuProcessor& processor : topology.processors)
        highest = std::max(highest, processor.maxClock);
    // x86, POWER and, the one that does not change first, z/Architecture.
    return highest > 0
        ? highest
        : HertzOf(info.Field({ "cpu MHz", "clock", "cpu MHz static", "cpu MHz dynamic" }));
}
} // namespace

std::string ProcessorSwitchPath(const std::string& root, int number)
{
    return ProcessorFolder(root, number) + "online";
}

CpuTopology ReadCpuTopology(const std::string& root)
{
    const CpuInfoText info = ReadCpuInfo(root);
    CpuTopology topology;
    for (const int number : PresentProcessors(root, info))
        topology.processors.push_back(ReadProcessor(root, number, info));
    CountSiblings(root, topology.processors);
    topology.instructions = InstructionSetOf(info);
    topology.vendor = info.Field({ "vendor_id" });
    topology.modelName = info.Field({ "model name" });
    topology.family = static_cast<int>(info.Number({ "cpu family" }));
    topology.model = static_cast<int>(info.Number({ "model" }));
    topology.stepping = static_cast<int>(info.Number({ "stepping", "CPU revision", "revision" }));
    topology.clock = ChooseClock(topology, info);
    return topology;
}

std::map<int, bigtime_t> ReadActiveTimes(const std::string& root)
{
    constexpr bigtime_t kMostTicks = 1LL << 40; // three centuries, of which sums still fit
    const bigtime_t microsPerTick = 1000000 / sysconf(_SC_CLK_TCK);
    std::map<int, bigtime_t> times;
    std::istringstream lines(ReadText(root + "/proc/stat"));
    for (std::string line; std::getline(lines, line) && line.starts_with("cpu");) {
        std::istringstream fields(line.substr(3));
        int number;
        if (line[3] == ' ' || !(fields >> number))
            continue;
        // User, nice, kernel, idle, wait, interrupt, soft interrupt. What follows is not ours, or
        // in the first two already.
        bigtime_t ticks[7] = {};
        for (bigtime_t& count : ticks) {
            fields >> count;
            count = std::clamp<bigtime_t>(count, 0, kMostTicks);
        }
        times[number] = (ticks[0] + ticks[1] + ticks[2] + ticks[5] + ticks[6]) * microsPerTick;
    }
    return times;
}

std::vector<int> ParseCpuList(std::string_view list)
{
    std::vector<int> numbers;
    list = Trimmed(list);
    while (!list.empty()) {
        const std::string_view range = list.substr(0, list.find(','));
        list.remove_prefix(std::min(list.size(), range.size() + 1));
        const size_t dash = range.find('-');
        const int first = ProcessorNumber(range.substr(0, dash));
        const int last =
            dash == std::string_view::npos ? first : ProcessorNumber(range.substr(dash + 1));
        // A damaged range is left out: the others are still true.
        if (first < 0 || last < 0)
            continue;
        for (int number = first; number <= last; number++)
            numbers.push_back(number);
    }
    return numbers;
}

std::vector<int> ParseCpuMask(std::string_view mask)
{
    std::vector<int> numbers;
    mask = Trimmed(mask);
    // Words of 32 bits, the lowest processors in the last one.
    for (int base = 0; !mask.empty() && base <= kMaxProcessorNumber; base += 32) {
        const size_t comma = mask.rfind(',');
        const std::string_view word =
            comma == std::string_view::npos ? mask : mask.substr(comma + 1);
        uint32 bits = 0;
        std::from_chars(word.data(), word.data() + word.size(), bits, 16);
        for (int bit = 0; bit < 32; bit++) {
            if (bits >> bit & 1)
                numbers.push_back(base + bit);
        }
        mask = mask.substr(0, comma == std::string_view::npos ? 0 : comma);
    }
    return numbers;
}

int64 ClockInModelName(std::string_view name)
{
    if (name.size() < 3 || !name.ends_with("Hz")) // "... CPU @ 2.40GHz"
        return 0;
    const size_t unit = name.size() - 3;
    const std::string_view number = name.substr(0, unit);
    const std::string_view digits = number.substr(number.find_last_not_of("0123456789.") + 1);
    const double factor = name[unit] == 'G' ? 1000 : name[unit] == 'M' ? 1 : 0;
    double value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return value * factor < 1e6 ? std::llround(value * factor * 1e6) : 0;
}
} // namespace kernel
