#include "MachineState.h"

#include "KillGuard.h"
#include "Processors.h"
#include "SystemTree.h"

#include <algorithm>
#include <ctime>

namespace {
using kernel::SystemTree;
using kernel::WholeNumber;

using Names = std::vector<std::string>;

bool IsOneOf(const std::optional<std::string>& text, std::initializer_list<std::string_view> texts)
{
    return text && std::find(texts.begin(), texts.end(), *text) != texts.end();
}

// Degrees from thousandths. A sensor that is off or broken tells what no machine survives.
std::optional<double> DegreesIn(const SystemTree& tree, const std::string& path)
{
    const auto thousandths = WholeNumber<int>(tree.Text(path).value_or(""));
    if (!thousandths || *thousandths < -100000 || *thousandths > 200000)
        return {};
    return *thousandths / 1000.0;
}

// The hottest of a chip's sensors whose label begins so.
std::optional<double> HottestOf(
    const SystemTree& tree, const std::string& folder, std::string_view label)
{
    std::optional<double> hottest;
    for (const std::string& name : tree.Names(folder).value_or(Names())) {
        if (!name.starts_with("temp") || !name.ends_with("_input"))
            continue;
        const std::string sensor = folder + name.substr(0, name.size() - 5);
        if (tree.Line(sensor + "label").value_or("").starts_with(label))
            hottest = std::max(hottest, DegreesIn(tree, folder + name)); // nothing is the least
    }
    return hottest;
}

// The whole package's sensor where one is named so: single cores are hotter than it.
std::optional<double> ChipTemperature(const SystemTree& tree, const std::string& folder)
{
    for (const char* label : { "Package", "Tdie", "Tctl", "" }) {
        if (const auto degrees = HottestOf(tree, folder, label))
            return degrees;
    }
    return {};
}

// "intel-rapl:0" is a package, "intel-rapl:0:1" a part of one.
bool IsTopLevel(const std::string& zone)
{
    constexpr std::string_view kStart = "intel-rapl:";
    return zone.starts_with(kStart) && WholeNumber<unsigned>(zone.substr(kStart.size()));
}

// Of the sensors in the processors' packages; where there are none, of the firmware's zones.
std::optional<double> ReadTemperature(const SystemTree& tree)
{
    constexpr char kChips[] = "/sys/class/hwmon/", kZones[] = "/sys/class/thermal/";
    std::optional<double> hottest;
    for (const std::string& chip : tree.Names(kChips).value_or(Names())) {
        if (IsOneOf(tree.Line(kChips + chip + "/name"),
                { "coretemp", "k10temp", "zenpower", "cpu_thermal", "cpu-thermal" }))
            hottest = std::max(hottest, ChipTemperature(tree, kChips + chip + "/"));
    }
    if (hottest)
        return hottest;
    for (const std::string& zone : tree.Names(kZones).value_or(Names())) {
        if (IsOneOf(tree.Line(kZones + zone + "/type"),
                { "x86_pkg_temp", "cpu_thermal", "cpu-thermal", "soc_thermal", "soc-thermal" }))
            hottest = std::max(hottest, DegreesIn(tree, kZones + zone + "/temp"));
    }
    return hottest;
}

// Nothing unless all packages can be read.
std::vector<EnergyCounter> ReadEnergy(const SystemTree& tree)
{
    std::vector<EnergyCounter> counters;
    for (const std::string& zone : tree.Names("/sys/class/powercap").value_or(Names())) {
        const std::string folder = "/sys/class/powercap/" + zone + "/";
        const std::string name = tree.Line(folder + "name").value_or("");
        // Beside the packages there may be one for the whole machine, which holds them.
        if (!IsTopLevel(zone) || !name.starts_with("package"))
            continue;
        const auto microjoules = tree.Count(folder + "energy_uj");
        if (!microjoules)
            return {};
        counters.push_back(
            { name, *microjoules, tree.Count(folder + "max_energy_range_uj").value_or(0) });
    }
    return counters;
}

// Fills onBattery, batteryPercent and mainsOnline.
void ReadPowerSupply(const SystemTree& tree, MachineState& state)
{
    const auto supplies = tree.Names("/sys/class/power_supply");
    if (!supplies)
        return;
    bool hasBattery = false, isDischarging = false;
    for (const std::string& supply : *supplies) {
        const std::string folder = "/sys/class/power_supply/" + supply + "/";
        const auto type = tree.Line(folder + "type");
        if (IsOneOf(tree.Line(folder + "scope"), { "Device" })) // of a mouse
            continue;
        if (IsOneOf(type, { "Mains", "USB" })) {
            if (const auto online = tree.Count(folder + "online"))
                state.mainsOnline = state.mainsOnline.value_or(false) || *online > 0;
        } else if (IsOneOf(type, { "Battery" })) {
            const auto percent = tree.Count(folder + "capacity");
            if (!hasBattery && percent && *percent <= 100)
                state.batteryPercent = static_cast<int>(*percent);
            hasBattery = true;
            isDischarging =
                isDischarging || IsOneOf(tree.Line(folder + "status"), { "Discharging" });
        }
    }
    // A weak charger does not keep the battery from emptying; the machine saves no power then.
    state.onBattery = hasBattery && isDischarging && !state.mainsOnline.value_or(false);
}

constexpr uint64 kFewestTicks = 10; // of them a share means something

void ReadLoad(const SystemTree& tree, MachineState& state)
{
    const std::string text = tree.Text("/proc/loadavg").value_or("");
    const std::vector<std::string_view> words = kernel::Words(text);
    const auto load = [&](size_t word) -> std::optional<double> {
        const auto value = WholeNumber<double>(word < words.size() ? words[word] : "");
        return value && *value >= 0 && *value < 1e6 ? value : std::nullopt; // not NaN either
    };
    state.load1 = load(0);
    state.load5 = load(1);
    state.load15 = load(2);
}

// "cpu3 user nice system idle iowait irq softirq steal ...": what guests used is in user already.
// Nothing for "cpu", the sum of all.
std::optional<ProcessorTimes> ParseTimes(std::string_view line)
{
    constexpr size_t kIdle = 4, kWait = 5, kStolen = 8;
    const std::vector<std::string_view> words = kernel::Words(line);
    const auto number = WholeNumber<int>(line.substr(3, line.find(' ') - 3));
    if (!number || *number < 0 || words.size() <= kWait)
        return {};
    ProcessorTimes times;
    times.number = *number;
    for (size_t i = 1; i < words.size() && i <= kStolen; i++) {
        const auto ticks = WholeNumber<uint64>(words[i]);
        if (!ticks || *ticks > uint64 { 1 } << 60)
            return {};
        times.total += *ticks;
        times.busy += i == kIdle || i == kWait ? 0 : *ticks;
        if (i == kStolen)
            times.stolen = ticks;
    }
    return times;
}

void ReadProcessors(const SystemTree& tree, MachineState& state)
{
    const std::string text = tree.Text("/proc/stat").value_or("");
    for (std::string_view rest = text; rest.starts_with("cpu");) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        auto times = ParseTimes(line);
        if (!times)
            continue;
        const std::string folder =
            "/sys/devices/system/cpu/cpu" + std::to_string(times->number) + "/thermal_throttle/";
        times->coreThrottles = tree.Count(folder + "core_throttle_count");
        if (!times->coreThrottles)
            times->coreThrottles = tree.Count(folder + "count"); // before 2009
        times->packageThrottles = tree.Count(folder + "package_throttle_count");
        state.processors.push_back(*times);
    }
    std::sort(state.processors.begin(), state.processors.end(),
        [](const auto& one, const auto& other) { return one.number < other.number; });
}

bigtime_t MicrosOf(clockid_t clock)
{
    timespec time = {};
    clock_gettime(clock, &time);
    return bigtime_t { time.tv_sec } * 1000000 + time.tv_nsec / 1000;
}

// One clock goes on while the machine sleeps and one does not. Being put off between reading the
// two only adds to the difference, so the smallest of some is the truest.
bigtime_t TimeAsleep()
{
    bigtime_t smallest = INT64_MAX;
    for (int i = 0; i < 5; i++) {
        const bigtime_t awake = MicrosOf(CLOCK_MONOTONIC);
        smallest = std::min(smallest, MicrosOf(CLOCK_BOOTTIME) - awake);
    }
    return std::max<bigtime_t>(0, smallest);
}

using Count = std::optional<uint64>;

Count Grown(const Count& before, const Count& after)
{
    return before && after && *before <= *after ? Count(*after - *before) : Count();
}

std::optional<double> Share(const Count& part, const Count& whole)
{
    if (!part || !whole || *whole < kFewestTicks || *part > *whole)
        return {};
    return static_cast<double>(*part) / static_cast<double>(*whole);
}

struct TickChange {
    Count total, busy, stolen;
};

TickChange TicksBetween(const ProcessorTimes& before, const ProcessorTimes& after)
{
    // The time of waiting, which is part of idling, is known to go backwards: what is not idle
    // grows all the same.
    return { Grown(before.total, after.total), Grown(before.busy, after.busy),
        Grown(before.stolen, after.stolen) };
}

// Adds up what all processors lost; empty if one cannot tell.
std::optional<double> StolenShare(const std::vector<TickChange>& changes)
{
    uint64 stolen = 0, total = 0;
    for (const TickChange& change : changes) {
        if (!change.stolen || !change.total)
            return {};
        stolen += *change.stolen;
        total += *change.total;
    }
    return Share(stolen, total);
}

void CompareProcessors(const MachineState& before, const MachineState& after, MachineChange& change)
{
    std::vector<TickChange> ticks;
    for (const ProcessorTimes& now : after.processors) {
        const auto then = std::find_if(before.processors.begin(), before.processors.end(),
            [&](const ProcessorTimes& times) { return times.number == now.number; });
        if (then == before.processors.end())
            continue;
        const TickChange tick = TicksBetween(*then, now);
        ticks.push_back(tick);
        const ProcessorChange processor { now.number, Share(tick.busy, tick.total),
            Share(tick.stolen, tick.total), Grown(then->coreThrottles, now.coreThrottles),
            Grown(then->packageThrottles, now.packageThrottles) };
        change.throttles =
            std::max({ change.throttles, processor.coreThrottles, processor.packageThrottles });
        change.processors.push_back(processor);
    }
    change.stolen = StolenShare(ticks);
}

// Of one package in microjoules.
Count Used(const EnergyCounter& before, const EnergyCounter& after)
{
    if (before.microjoules <= after.microjoules)
        return after.microjoules - before.microjoules;
    if (before.microjoules > before.range || before.range != after.range)
        return {};
    return before.range - before.microjoules + after.microjoules;
}

std::optional<double> JoulesBetween(const MachineState& before, const MachineState& after)
{
    if (before.energy.empty() || before.energy.size() != after.energy.size())
        return {};
    double joules = 0;
    for (size_t i = 0; i < after.energy.size(); i++) {
        const Count used = Used(before.energy[i], after.energy[i]);
        if (!used || before.energy[i].name != after.energy[i].name)
            return {};
        joules += static_cast<double>(*used) / 1e6;
    }
    return joules;
}
} // namespace

MachineState ReadMachineState()
{
    const KillGuard guard;
    const SystemTree tree(kernel::Processors::Get()->Root());
    MachineState state;
    ReadLoad(tree, state);
    ReadProcessors(tree, state);
    state.temperature = ReadTemperature(tree);
    state.energy = ReadEnergy(tree);
    ReadPowerSupply(tree, state);
    if (tree.Root().empty()) // there is no other machine's clock to read
        state.asleep = TimeAsleep();
    state.sleeps = tree.Count("/sys/power/suspend_stats/success");
    return state;
}

MachineChange ChangeBetween(const MachineState& before, const MachineState& after)
{
    MachineChange change;
    CompareProcessors(before, after, change);
    change.joules = JoulesBetween(before, after);
    if (before.asleep && after.asleep)
        change.secondsAsleep =
            static_cast<double>(std::max<bigtime_t>(0, *after.asleep - *before.asleep)) / 1e6;
    change.sleeps = Grown(before.sleeps, after.sleeps);
    return change;
}

std::vector<SiblingUse> UnusedSiblings(
    const MachineDetails& details, size_t used, const MachineChange& change)
{
    std::vector<int> known; // of the run, or listed already
    used = std::min(used, details.processors.size());
    for (size_t i = 0; i < used; i++)
        known.push_back(details.processors[i].number);
    std::vector<SiblingUse> siblings;
    for (size_t i = 0; i < used; i++) {
        for (const int number : details.processors[i].siblings) {
            if (std::find(known.begin(), known.end(), number) != known.end())
                continue;
            known.push_back(number);
            const auto found = std::find_if(change.processors.begin(), change.processors.end(),
                [&](const ProcessorChange& processor) { return processor.number == number; });
            siblings.push_back({ number, details.processors[i].number,
                found == change.processors.end() ? std::nullopt : found->busy });
        }
    }
    return siblings;
}
