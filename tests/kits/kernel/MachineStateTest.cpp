#include "MachineTree.h"

#include <RunWarnings.h>

namespace {
// Two cores of two threads each, of which the run has processor 0 and 2.
MachineDetails TwoCores()
{
    MachineDetails details;
    details.processors.resize(2);
    details.processors[0].number = 0;
    details.processors[0].siblings = { 0, 1 };
    details.processors[1].number = 2;
    details.processors[1].siblings = { 2, 3 };
    return details;
}

ProcessorTimes Times(int number, uint64 total, uint64 busy, std::optional<uint64> stolen = 0)
{
    return { number, total, busy, stolen, {}, {} };
}

MachineState StateWith(std::vector<ProcessorTimes> processors)
{
    MachineState state;
    state.processors = std::move(processors);
    return state;
}

// "id: text" of each.
std::vector<std::string> Lines(const std::vector<RunWarning>& warnings)
{
    std::vector<std::string> lines;
    for (const RunWarning& warning : warnings)
        lines.push_back(warning.id + ": " + warning.text);
    return lines;
}

using Texts = std::vector<std::string>;
} // namespace

TEST(MachineState, LoadAndTimesOfProcessors)
{
    const ThisMachine tree;
    tree.Write("proc/loadavg", "2.31 0.80 nan 6/129 3072\n");
    tree.Write("proc/stat",
        "cpu  9 9 9 9 9 9 9 9 9 9\ncpu10 1 2 3 40 50 6 7 8 100 0\ncpu2 1 2 3 40 50 6 7\n"
        "cpu3 1 x 3 40 50\ncpux 1 2 3 4 5 6\ncpu\nintr 1\ncpu4 1 2 3 4 5 6 7 8\n");
    const MachineState state = ReadMachineState();
    EXPECT_EQ(std::tuple(state.load1, state.load5), std::tuple(2.31, 0.8));
    EXPECT_EQ(state.load15, std::nullopt);
    ASSERT_EQ(state.processors.size(), 2u);
    const ProcessorTimes &old = state.processors[0], &last = state.processors[1];
    EXPECT_TRUE(old.number == 2 && !old.stolen) << "an old kernel";
    EXPECT_EQ(
        std::tuple(last.number, last.total, last.busy, last.stolen), std::tuple(10, 117u, 27u, 8u));
}

TEST(MachineState, TemperatureOfTheHottestPackage)
{
    const ThisMachine tree;
    const std::string chip = "sys/class/hwmon/hwmon";
    tree.Write("sys/class/thermal/thermal_zone3/type", "x86_pkg_temp\n");
    tree.Write("sys/class/thermal/thermal_zone3/temp", "61000\n");
    EXPECT_EQ(ReadMachineState().temperature, 61);
    tree.Write(chip + "0/name", "nvme\n");
    tree.Write(chip + "0/temp1_input", "90000\n");
    for (const char* number : { "1", "2" }) {
        tree.Write(chip + number + "/name", "coretemp\n");
        tree.Write(chip + number + "/temp1_label", std::string("Package id ") + number + "\n");
        tree.Write(chip + number + "/temp1_input", std::string(number) + "4500\n");
        tree.Write(chip + number + "/temp2_label", "Core 0\n");
        tree.Write(chip + number + "/temp2_input", "70000\n");
    }
    EXPECT_EQ(ReadMachineState().temperature, 24.5);
}

TEST(MachineState, BatteryAndMains)
{
    const ThisMachine tree;
    const std::string supply = "sys/class/power_supply/";
    tree.Write(supply + "mouse/type", "Battery\n");
    tree.Write(supply + "mouse/scope", "Device\n");
    tree.Write(supply + "mouse/status", "Discharging\n");
    EXPECT_EQ(ReadMachineState().onBattery, false);
    tree.Write(supply + "BAT0/type", "Battery\n");
    tree.Write(supply + "BAT0/status", "Discharging\n");
    tree.Write(supply + "BAT0/capacity", "57\n");
    EXPECT_EQ(ReadMachineState().onBattery, true);
    EXPECT_EQ(ReadMachineState().batteryPercent, 57);
    EXPECT_EQ(ReadMachineState().mainsOnline, std::nullopt);
    tree.Write(supply + "AC/type", "Mains\n");
    tree.Write(supply + "AC/online", "1\n");
    EXPECT_EQ(ReadMachineState().onBattery, false);
    EXPECT_EQ(ReadMachineState().mainsOnline, true);
}

TEST(MachineState, EnergyOfAllPackagesAcrossAWrap)
{
    const ThisMachine tree;
    const auto write = [&](const std::string& zone, const char* name, const char* energy) {
        const std::string folder = "sys/class/powercap/" + zone + "/";
        tree.Write(folder + "name", name);
        tree.Write(folder + "energy_uj", energy);
        tree.Write(folder + "max_energy_range_uj", "262143328850\n");
    };
    write("intel-rapl:0", "package-0\n", "262140328850\n");
    write("intel-rapl:0:0", "core\n", "1\n");
    write("intel-rapl:1", "package-1\n", "1000000\n");
    write("intel-rapl:2", "psys\n", "1\n"); // holds the packages
    write("intel-rapl-mmio:0", "package-0\n", "1\n"); // the same package once more
    const MachineState before = ReadMachineState();
    write("intel-rapl:0", "package-0\n", "4000000\n");
    write("intel-rapl:1", "package-1\n", "1500000\n");
    write("intel-rapl:2", "psys\n", "9000000\n");
    EXPECT_EQ(ChangeBetween(before, ReadMachineState()).joules, 7.5);
    tree.Write("sys/class/powercap/intel-rapl:1/max_energy_range_uj", "");
    EXPECT_EQ(ChangeBetween(ReadMachineState(), before).joules, std::nullopt);
    std::filesystem::remove(tree / "sys/class/powercap/intel-rapl:1/energy_uj");
    EXPECT_TRUE(ReadMachineState().energy.empty());
    EXPECT_EQ(ChangeBetween(before, ReadMachineState()).joules, std::nullopt);
}

TEST(MachineState, SharesOfTheTimeBetween)
{
    const MachineState before =
        StateWith({ Times(0, 1000, 500, 10), Times(1, 1000, 500, 10), Times(2, 1000, 500, 10) });
    const MachineState after =
        StateWith({ Times(0, 1200, 550, 13), Times(1, 1005, 505, 10), Times(3, 9999, 9999, 99) });
    const MachineChange change = ChangeBetween(before, after);
    ASSERT_EQ(change.processors.size(), 2u);
    EXPECT_EQ(change.processors[0].busy, 0.25);
    EXPECT_EQ(change.processors[0].stolen, 0.015);
    EXPECT_EQ(change.processors[1].busy, std::nullopt); // five ticks
    EXPECT_EQ(change.stolen, 3.0 / 205);
    EXPECT_EQ(ChangeBetween(after, before).stolen, std::nullopt);
}

TEST(MachineState, SiblingsThatTheRunDoesNotUse)
{
    const MachineChange change =
        ChangeBetween(StateWith({ Times(0, 0, 0), Times(1, 0, 0), Times(2, 0, 0) }),
            StateWith({ Times(0, 100, 100), Times(1, 100, 40), Times(2, 100, 30) }));
    const auto siblings = UnusedSiblings(TwoCores(), 2, change);
    ASSERT_EQ(siblings.size(), 2u);
    EXPECT_EQ(
        std::tuple(siblings[0].number, siblings[0].of, siblings[0].busy), std::tuple(1, 0, 0.4));
    EXPECT_TRUE(siblings[1].number == 3 && !siblings[1].busy);
    MachineDetails both = TwoCores();
    both.processors[1].number = 1; // of one core with a third
    both.processors[0].siblings = both.processors[1].siblings = { 0, 1, 5 };
    EXPECT_EQ(UnusedSiblings(both, 2, change).size(), 1u);
    EXPECT_EQ(UnusedSiblings(both, 1, change).size(), 2u);
}

TEST(RunWarnings, AQuietMachineHasNone)
{
    MachineState before = StateWith({ Times(0, 0, 0), Times(1, 0, 0) });
    MachineState after = StateWith({ Times(0, 1000, 900, 10), Times(1, 1000, 50) });
    before.load1 = after.load1 = 0.5;
    before.asleep = 5000000;
    after.asleep = 5000009;
    MachineDetails details = TwoCores();
    details.virtualMachine = "none";
    details.processors[0].governor = details.processors[1].governor = "powersave";
    details.processors[0].clockDriver = "intel_pstate";
    details.processors[1].energyPreference = "balance_performance";
    RunSurroundings surroundings;
    surroundings.used = 2;
    surroundings.temporaryFolder = { "ext4", false };
    surroundings.display = { "The X.Org Foundation", { "DRI3", "RANDR" }, { "eDP-1" } };
    EXPECT_EQ(Lines(WarningsBeforeRun(details, before, after, surroundings)), Texts());
    EXPECT_EQ(Lines(WarningsBeforeRun({}, {}, {}, {})), Texts());
}

TEST(RunWarnings, EachNamesItsValue)
{
    MachineState before = StateWith({ Times(0, 0, 0), Times(1, 0, 0) });
    MachineState after = StateWith({ Times(0, 1000, 900, 30), Times(1, 1000, 444) });
    before.processors[0].coreThrottles = 7;
    after.processors[0].coreThrottles = 10;
    after.temperature = 99.6;
    after.load1 = 2.31;
    after.onBattery = true;
    after.batteryPercent = 57;
    before.asleep = 0;
    after.asleep = 61500000;
    MachineDetails details = TwoCores();
    details.virtualMachine = "KVM";
    details.processors[0].governor = "powersave";
    RunSurroundings surroundings;
    surroundings.temporaryFolder = { "tmpfs", true };
    surroundings.display = { "The X.Org Foundation", { "GLX", "RANDR" }, { "screen" } };
    const Texts during = {
        "battery: on battery (57 percent): the machine may save power by running slower",
        "throttled: the processor was slowed down by heat 3 times (100 degrees Celsius now)",
        "steal: 1.5 percent of the processors' time was taken by the hypervisor for others",
        "sibling-busy: processor 1, in the same core as processor 0, is busy for 44.4 percent of "
        "the time: the tests get less of the core",
        "asleep: the machine slept for 61.5 seconds",
    };
    EXPECT_EQ(Lines(WarningsOfRun(details, before, after, 1)), during);
    EXPECT_EQ(Lines(WarningsBeforeRun(details, before, after, surroundings)),
        (Texts { "load: load 2.31: other programs share the processors",
            "governor: power-saving clock (governor powersave): the processors run slower than "
            "they can",
            during[0],
            "virtual-machine: virtual machine (KVM): other machines may share its processors "
            "without being seen",
            during[1], during[2], during[3], during[4],
            "temporary-in-memory: the temporary directory lies in memory (tmpfs): the disk tests "
            "do not measure a disk",
            "software-display: software-drawn display (it has no real output, only <screen>): the "
            "graphics tests measure the processor, not a graphics card" }));
    details.processors[0].siblings = { 0 };
    EXPECT_EQ(Lines(WarningsBeforeRun(details, {}, {}, {})).back(),
        "sibling-invisible: no second hardware thread of a core is visible: what runs beside the "
        "tests in the same core cannot be told");
}

TEST(RunWarnings, DisplaysThatDrawWithTheProcessor)
{
    EXPECT_TRUE(SoftwareDrawing({ "X server of VNC", { "DRI3" }, {} }));
    EXPECT_TRUE(SoftwareDrawing({ "A", { "RANDR" }, { "HDMI-1" } }));
    EXPECT_FALSE(SoftwareDrawing({ "A", { "RANDR", "NV-GLX" }, { "HDMI-1" } }));
    EXPECT_FALSE(SoftwareDrawing({ "A", {}, {} }));
}
