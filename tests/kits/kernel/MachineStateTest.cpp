#include "MachineTree.h"
#include "tests/support/Rows.h"

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

} // namespace

TEST(MachineState, LoadAndTimesOfProcessors)
{
    const ThisMachine tree;
    tree.Write("proc/loadavg", "2.31 0.80 nan 6/129 3072\n");
    tree.Write("proc/stat",
        "cpu  9 9 9 9 9 9 9 9 9 9\ncpu10 1 2 3 40 50 6 7 8 100 0\ncpu2 1 2 3 40 50 6 7\n"
        "cpu3 1 x 3 40 50\ncpu5 1152921504606846976 0 0 0 0\ncpu6 1152921504606846977 0 0 0 0\n"
        "cpux 1 2 3 4 5 6\ncpu-1 1 2 3 4 5\ncpu7 1 2 3 4\ncpu\nintr 1\ncpu4 1 2 3 4 5 6 7 8\n");
    for (const auto& [file, count] : { std::pair("2/thermal_throttle/core_throttle_count", "40"),
             { "2/thermal_throttle/count", "41" }, { "5/thermal_throttle/count", "42" },
             { "5/thermal_throttle/package_throttle_count", "43" } })
        tree.Write(std::string("sys/devices/system/cpu/cpu") + file, count);
    tree.Write("sys/power/suspend_stats/success", "3\n");
    const MachineState state = ReadMachineState();
    EXPECT_EQ(Text(state.load1) + " " + Text(state.load5) + " " + Text(state.load15), "2.31 0.8 -");
    EXPECT_EQ(Text(state.sleeps) + Text(state.asleep), "3-");
    std::string lines;
    for (const ProcessorTimes& times : state.processors)
        lines += std::to_string(times.number) + ": " + std::to_string(times.total) + " "
            + std::to_string(times.busy) + " " + Text(times.stolen) + " "
            + Text(times.coreThrottles) + " " + Text(times.packageThrottles) + "\n";
    EXPECT_EQ(lines,
        "2: 109 19 - 40 -\n" // an old kernel
        "5: 1152921504606846976 1152921504606846976 - 42 43\n"
        "10: 117 27 8 - -\n");
}

TEST(MachineState, TemperatureOfTheHottestPackage)
{
    const ThisMachine tree;
    for (const Row& row : RowsOf("kits/kernel/data/temperatures.txt", 3)) {
        tree.Write("sys/class/" + row[0], row[1]);
        EXPECT_EQ(Text(ReadMachineState().temperature), row[2]) << row[0] << " " << row[1];
    }
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
    MachineState renamed = before;
    renamed.energy[0].name = "another";
    EXPECT_EQ(ChangeBetween(renamed, ReadMachineState()).joules, std::nullopt);
    tree.Write("sys/class/powercap/intel-rapl:1/max_energy_range_uj", "");
    EXPECT_EQ(ChangeBetween(ReadMachineState(), before).joules, std::nullopt);
    std::filesystem::remove(tree / "sys/class/powercap/intel-rapl:1/energy_uj");
    EXPECT_TRUE(ReadMachineState().energy.empty());
    EXPECT_EQ(ChangeBetween(before, ReadMachineState()).joules, std::nullopt);
}

TEST(MachineState, SharesOfTheTimeBetween)
{
    MachineState before =
        StateWith({ Times(0, 1000, 500, 10), Times(1, 1000, 500, 10), Times(2, 1000, 500, 10) });
    MachineState after =
        StateWith({ Times(0, 1200, 550, 13), Times(1, 1009, 509, 10), Times(3, 9999, 9999, 99) });
    before.processors[0].coreThrottles = after.processors[0].packageThrottles = 5;
    before.processors[1].coreThrottles = before.processors[1].packageThrottles = 5;
    after.processors[1].coreThrottles = 7, after.processors[1].packageThrottles = 6;
    before.asleep = after.sleeps = 2'000'000, after.asleep = 3'500'000, before.sleeps = 1'999'999;
    const auto line = [](const MachineChange& change) {
        std::string text = Text(change.stolen) + " " + Text(change.throttles) + " "
            + Text(change.secondsAsleep) + " " + Text(change.sleeps);
        for (const ProcessorChange& one : change.processors)
            text += ", " + std::to_string(one.number) + ": " + Text(one.busy) + " "
                + Text(one.stolen) + " " + Text(one.coreThrottles) + " "
                + Text(one.packageThrottles);
        return text;
    };
    // Of processor 1 nine ticks went by.
    EXPECT_EQ(
        line(ChangeBetween(before, after)), "0.0143541 2 1.5 1, 0: 0.25 0.015 - -, 1: - - 2 1");
    EXPECT_EQ(line(ChangeBetween(after, before)), "- - 0 -, 0: - - - -, 1: - - - -");
    after.processors[1].total++;
    after.processors[1].stolen = std::nullopt;
    before.asleep = std::nullopt;
    EXPECT_EQ(line(ChangeBetween(before, after)), "- 2 - 1, 0: 0.25 0.015 - -, 1: 0.9 - 2 1");
    after.processors[1].busy += 2; // more than all
    EXPECT_EQ(line(ChangeBetween(before, after)), "- 2 - 1, 0: 0.25 0.015 - -, 1: - - 2 1");
}

TEST(MachineState, SiblingsThatTheRunDoesNotUse)
{
    const MachineChange change =
        ChangeBetween(StateWith({ Times(0, 0, 0), Times(1, 0, 0), Times(2, 0, 0) }),
            StateWith({ Times(0, 100, 100), Times(1, 100, 40), Times(2, 100, 30) }));
    const auto siblings = [&](const MachineDetails& details, size_t used) {
        std::string text;
        for (const SiblingUse& sibling : UnusedSiblings(details, used, change))
            text += std::to_string(sibling.number) + " of " + std::to_string(sibling.of) + ": "
                + Text(sibling.busy) + ", ";
        return text;
    };
    EXPECT_EQ(siblings(TwoCores(), 0) + siblings(TwoCores(), 1), "1 of 0: 0.4, ");
    EXPECT_EQ(siblings(TwoCores(), 9), "1 of 0: 0.4, 3 of 2: -, ");
    MachineDetails both = TwoCores();
    both.processors[1].number = 1; // of one core with a third
    both.processors[0].siblings = both.processors[1].siblings = { 0, 1, 5 };
    EXPECT_EQ(siblings(both, 2), "5 of 0: -, ");
    EXPECT_EQ(siblings(both, 1), "1 of 0: 0.4, 5 of 0: -, ");
}

namespace {
// A quiet machine of two cores, of which a run has both, and what changes there.
struct Scene {
    Scene()
    {
        before.load1 = after.load1 = 0.5;
        before.asleep = 5'000'000;
        after.asleep = 5'100'000;
        details.virtualMachine = "none";
        details.processors[0].governor = details.processors[1].governor = "powersave";
        details.processors[0].clockDriver = "intel_pstate";
        details.processors[1].energyPreference = "balance_performance";
        surroundings.used = 2;
        surroundings.temporaryFolder = { "ext4", false };
        surroundings.display = { "The X.Org Foundation", { "DRI3", "RANDR" }, { "eDP-1" } };
    }
    ProcessorDetails& First() { return details.processors[0]; }

    MachineDetails details = TwoCores();
    MachineState before = StateWith({ Times(0, 0, 0), Times(1, 0, 0) });
    MachineState after = StateWith({ Times(0, 1000, 900, 10), Times(1, 1000, 50, 10) });
    RunSurroundings surroundings;
};

// "id: text" of each, a line each.
std::string Lines(const std::vector<RunWarning>& warnings)
{
    std::string lines;
    for (const RunWarning& warning : warnings)
        lines += warning.id + ": " + warning.text + "\n";
    return lines;
}
} // namespace

TEST(RunWarnings, EachNamesItsValueAndStandsWhereItIsPassed)
{
    EXPECT_EQ(Lines(WarningsBeforeRun({}, {}, {}, {})), "");
    // Changes of the quiet machine, by the lines of a table that has the warnings before and of a
    // run.
    const std::function<void(Scene&)> changes[] = {
        [](Scene&) {},
        [](Scene& s) { s.after.load1 = 0.51; },
        [](Scene& s) { s.First().clockDriver = "acpi-cpufreq"; },
        [](Scene& s) { s.details.processors[1].energyPreference = "balance_power"; },
        [](Scene& s) { s.First().energyPreference = "power", s.First().governor.reset(); },
        [](Scene& s) { s.First().governor = "performance", s.First().clockDriver.reset(); },
        [](Scene& s) { s.First().clockDriver = "amd-pstate-epp", s.surroundings.used = 9; },
        [](Scene& s) { s.after.onBattery = true, s.after.batteryPercent = 57; },
        [](Scene& s) { s.after.onBattery = true; },
        [](Scene& s) { s.details.virtualMachine = "KVM"; },
        [](Scene& s) { s.details.virtualMachine = "unknown kind", s.surroundings.used = 0; },
        [](Scene& s) {
            s.details.virtualMachine = "Xen";
            s.First().siblings = s.details.processors[1].siblings = { 0 };
        },
        [](Scene& s) {
            s.before.processors[0].coreThrottles = 7, s.after.processors[0].coreThrottles = 10;
            s.after.temperature = 99.6;
        },
        [](Scene& s) {
            s.before.processors[1].packageThrottles = 7;
            s.after.processors[1].packageThrottles = 8;
        },
        [](Scene& s) { s.after.processors[0].stolen = 11; },
        [](Scene& s) { s.after.processors[1].busy = 51; },
        [](Scene& s) { s.after.asleep = 5'149'999; },
        [](Scene& s) { s.after.asleep = 66'500'000, s.before.sleeps = 1, s.after.sleeps = 2; },
        [](Scene& s) { s.before.sleeps = 1, s.after.sleeps = 2; },
        [](Scene& s) { s.before.sleeps = 1, s.after.sleeps = 3; },
        [](Scene& s) {
            s.surroundings.temporaryFolder = { "tmpfs", true };
        },
        [](Scene& s) {
            s.surroundings.display->outputs = { "screen", "VNC-0", "DUMMY1" };
        },
        [](Scene& s) { s.surroundings.display->vendor = "X server of VNC"; },
        [](Scene& s) {
            s.surroundings.display->extensions = { "GLX", "RANDR" };
        },
        [](Scene& s) { s.surroundings.display->extensions = { "NV-GLX" }; },
        [](Scene& s) { s.surroundings.display->extensions = {}; },
    };
    const std::vector<Row> rows = RowsOf("kits/kernel/data/warnings.txt", 3);
    ASSERT_EQ(rows.size(), std::size(changes));
    Scene all;
    for (size_t i = 0; i < rows.size(); i++) {
        Scene scene;
        changes[i](scene);
        const auto& [details, before, after, surroundings] = scene;
        EXPECT_EQ(Lines(WarningsBeforeRun(details, before, after, surroundings)), rows[i][1])
            << rows[i][0];
        EXPECT_EQ(Lines(WarningsOfRun(details, before, after, surroundings.used)), rows[i][2])
            << rows[i][0];
    }
    for (const size_t i : { 1u, 2u, 7u, 9u, 12u, 14u, 15u, 17u, 20u, 21u })
        changes[i](all);
    std::string order;
    for (const RunWarning& warning :
        WarningsBeforeRun(all.details, all.before, all.after, all.surroundings))
        order += warning.id + " ";
    EXPECT_EQ(order,
        "load governor battery virtual-machine throttled steal sibling-busy asleep "
        "temporary-in-memory software-display ");
}
