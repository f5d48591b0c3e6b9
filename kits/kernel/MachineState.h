// Beside the platform's calls: the state of the machine at a moment, and what two of them, from
// before and after a run or a pass, say of the time between.
//
// What the system does not tell, or not to this user, is empty; never 0.
#pragma once

#include "MachineDetails.h"

// Times in the system's ticks since it started; of processors that are on.
struct ProcessorTimes {
    int number = 0; // the system's
    uint64 total = 0;
    uint64 busy = 0; // with whatever program, and what the hypervisor took
    std::optional<uint64> stolen; // what the hypervisor took while there was work
    // How often heat slowed it down; processors of one core or package count the same events.
    std::optional<uint64> coreThrottles, packageThrottles;
};

// What a package of processors has used, its memory left out.
struct EnergyCounter {
    std::string name; // "package-0"
    uint64 microjoules = 0;
    uint64 range = 0; // it starts again from 0 behind this; 0: not told
};

struct MachineState {
    std::optional<double> load1, load5, load15; // programs that ran or wanted to, over minutes
    std::vector<ProcessorTimes> processors; // by number
    std::optional<double> temperature; // degrees Celsius, of the hottest package
    std::vector<EnergyCounter> energy; // since 2020 only root may read it
    std::optional<bool> onBattery; // false where there is none
    std::optional<int> batteryPercent; // of the first battery
    std::optional<bool> mainsOnline;
    std::optional<bigtime_t> asleep; // microseconds since the machine started
    std::optional<uint64> sleeps; // likewise
};

// Reads it; takes some milliseconds.
[[nodiscard]] MachineState ReadMachineState();

// Shares are of the time between, 0 to 1.
struct ProcessorChange {
    int number = 0;
    std::optional<double> busy, stolen; // empty if it was off or less than ten ticks went by
    std::optional<uint64> coreThrottles, packageThrottles;
};

struct MachineChange {
    std::vector<ProcessorChange> processors; // those that were on at both moments; by number
    std::optional<double> stolen; // share, of all of them together
    std::optional<uint64> throttles; // of the processor that was slowed down most often
    std::optional<double> joules; // of all packages; empty if one of them cannot be told
    std::optional<double> secondsAsleep;
    std::optional<uint64> sleeps;
};

// Counters may have started again once in between where their range is known; what has gone
// backwards otherwise is empty.
[[nodiscard]] MachineChange ChangeBetween(const MachineState& before, const MachineState& after);

// A processor that shares its core with one of the run's and is not one of them.
struct SiblingUse {
    int number = 0;
    int of = 0; // the run's first processor in that core
    std::optional<double> busy; // share; empty as in ProcessorChange
};

// The siblings of the first used processors of the details, which is how many a pass works with.
[[nodiscard]] std::vector<SiblingUse> UnusedSiblings(
    const MachineDetails& details, size_t used, const MachineChange& change);
