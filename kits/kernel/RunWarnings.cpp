#include "RunWarnings.h"

#include <algorithm>
#include <charconv>

namespace {
using Warnings = std::vector<RunWarning>;

// Above these a result is no longer that of an idle machine. The load counts threads that want to
// run, the others are shares of time.
constexpr double kHighLoad = 0.5;
constexpr double kHighSteal = 0.01;
constexpr double kBusySibling = 0.05;
constexpr double kShortestSleep = 0.1; // seconds; the two clocks differ by less while awake

// With so many decimals, and a point wherever the user lives.
std::string Decimal(double value, int decimals)
{
    char text[32];
    const auto result =
        std::to_chars(text, text + sizeof(text), value, std::chars_format::fixed, decimals);
    return result.ec == std::errc() ? std::string(text, result.ptr) : "?";
}

std::string Percent(double share)
{
    return Decimal(share * 100, 1) + " percent";
}

std::string Times(uint64 count)
{
    return count == 1 ? "once" : std::to_string(count) + " times";
}

void WarnOfLoad(const MachineState& now, Warnings& warnings)
{
    if (now.load1 && *now.load1 > kHighLoad)
        warnings.push_back(
            { "load", "load " + Decimal(*now.load1, 2) + ": other programs share the processors" });
}

// Some drivers call all that is not a fixed highest clock "powersave", and weigh by the preference.
bool SavesPower(const ProcessorDetails& processor)
{
    const std::string preference = processor.energyPreference.value_or("");
    if (!preference.empty())
        return preference == "power" || preference == "balance_power";
    const std::string driver = processor.clockDriver.value_or("");
    const bool isScaledByDriver = driver == "intel_pstate" || driver == "amd-pstate-epp";
    return processor.governor == "powersave" && !isScaledByDriver;
}

void WarnOfGovernor(const MachineDetails& details, size_t used, Warnings& warnings)
{
    for (size_t i = 0; i < used; i++) {
        const ProcessorDetails& processor = details.processors[i];
        if (!SavesPower(processor))
            continue;
        // The first one stands for all: nearly always they are set alike.
        warnings.push_back({ "governor",
            "power-saving clock (governor " + processor.governor.value_or("unknown")
                + (processor.energyPreference ? ", preference " + *processor.energyPreference : "")
                + "): the processors run slower than they can" });
        return;
    }
}

void WarnOfBattery(const MachineState& state, Warnings& warnings)
{
    if (!state.onBattery.value_or(false))
        return;
    const std::string charge =
        state.batteryPercent ? " (" + std::to_string(*state.batteryPercent) + " percent)" : "";
    warnings.push_back(
        { "battery", "on battery" + charge + ": the machine may save power by running slower" });
}

void WarnOfMachine(const MachineDetails& details, size_t used, Warnings& warnings)
{
    const std::string machine = details.virtualMachine.value_or("none");
    if (machine == "none")
        return;
    const std::string name = machine == "unknown kind" ? "virtual machine of unknown kind"
                                                       : "virtual machine (" + machine + ")";
    warnings.push_back({ "virtual-machine",
        name + ": other machines may share its processors without being seen" });
    const auto seesSibling = [](const auto& processor) { return processor.siblings.size() > 1; };
    const auto first = details.processors.begin();
    if (used > 0 && std::none_of(first, first + static_cast<std::ptrdiff_t>(used), seesSibling))
        warnings.push_back({ "sibling-invisible",
            "no second hardware thread of a core is visible: what runs beside the tests in the "
            "same core cannot be told" });
}

void WarnOfPlaces(const RunSurroundings& surroundings, Warnings& warnings)
{
    if (surroundings.temporaryFolder && surroundings.temporaryFolder->isInMemory)
        warnings.push_back({ "temporary-in-memory",
            "the temporary directory lies in memory (" + surroundings.temporaryFolder->type
                + "): the disk tests do not measure a disk" });
    if (!surroundings.display)
        return;
    if (const auto reason = SoftwareDrawing(*surroundings.display))
        warnings.push_back({ "software-display",
            "software-drawn display (" + *reason
                + "): the graphics tests measure the processor, not a graphics card" });
}

void WarnOfSiblings(
    const MachineDetails& details, size_t used, const MachineChange& change, Warnings& warnings)
{
    for (const SiblingUse& sibling : UnusedSiblings(details, used, change)) {
        if (sibling.busy.value_or(0) > kBusySibling)
            warnings.push_back({ "sibling-busy",
                "processor " + std::to_string(sibling.number) + ", in the same core as processor "
                    + std::to_string(sibling.of) + ", is busy for " + Percent(*sibling.busy)
                    + " of the time: the tests get less of the core" });
    }
}

void WarnOfChange(const MachineDetails& details, size_t used, const MachineChange& change,
    const std::optional<double>& temperature, Warnings& warnings)
{
    if (const uint64 count = change.throttles.value_or(0); count > 0)
        warnings.push_back({ "throttled",
            "the processor was slowed down by heat " + Times(count)
                + (temperature ? " (" + Decimal(*temperature, 0) + " degrees Celsius now)" : "") });
    if (change.stolen.value_or(0) > kHighSteal)
        warnings.push_back({ "steal",
            Percent(*change.stolen)
                + " of the processors' time was taken by the hypervisor for others" });
    WarnOfSiblings(details, used, change, warnings);
    const double seconds = change.secondsAsleep.value_or(0);
    // One warning of the two: the length says more than the count, which older systems do not have.
    if (seconds > kShortestSleep)
        warnings.push_back(
            { "asleep", "the machine slept for " + Decimal(seconds, 1) + " seconds" });
    else if (change.sleeps.value_or(0) > 0)
        warnings.push_back({ "asleep", "the machine slept " + Times(*change.sleeps) });
}

bool Contains(const std::vector<std::string>& texts, std::string_view text)
{
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}
} // namespace

std::optional<std::string> SoftwareDrawing(const DisplayDetails& display)
{
    for (const char* name : { "Xvfb", "VNC", "llvmpipe", "softpipe" }) {
        if (display.vendor.find(name) != std::string::npos)
            return display.vendor;
    }
    const auto isVirtual = [](const std::string& output) {
        return output == "screen" || output.starts_with("VNC-") || output.starts_with("DUMMY");
    };
    const auto& outputs = display.outputs;
    if (!outputs.empty() && std::all_of(outputs.begin(), outputs.end(), isVirtual))
        return "it has no real output, only <" + outputs[0] + ">";
    // A graphics card's driver brings one of these, be it the free or the maker's own.
    for (const char* extension : { "DRI3", "DRI2", "NV-CONTROL", "NV-GLX" }) {
        if (Contains(display.extensions, extension))
            return {};
    }
    if (display.extensions.empty()) // it was not asked
        return {};
    return "it has no direct rendering";
}

std::vector<RunWarning> WarningsBeforeRun(const MachineDetails& details,
    const MachineState& earlier, const MachineState& now, const RunSurroundings& surroundings)
{
    const size_t used = std::min(surroundings.used, details.processors.size());
    Warnings warnings;
    WarnOfLoad(now, warnings);
    WarnOfGovernor(details, used, warnings);
    WarnOfBattery(now, warnings);
    WarnOfMachine(details, used, warnings);
    WarnOfChange(details, used, ChangeBetween(earlier, now), now.temperature, warnings);
    WarnOfPlaces(surroundings, warnings);
    return warnings;
}

std::vector<RunWarning> WarningsOfRun(const MachineDetails& details, const MachineState& before,
    const MachineState& after, size_t used)
{
    Warnings warnings;
    WarnOfBattery(after, warnings);
    WarnOfChange(details, used, ChangeBetween(before, after), after.temperature, warnings);
    return warnings;
}
