#include "PowerState.h"

#include <algorithm>

namespace kernel {
namespace {
typedef std::vector<std::string> Names;

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
} // namespace

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
} // namespace kernel
