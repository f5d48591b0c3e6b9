// Beside the platform's calls: what makes the figures of a run doubtful.
#pragma once

#include "MachineState.h"

// A line for the user, and what tells it from the others in a record.
struct RunWarning {
    std::string id; // "load", the same in all versions
    std::string text; // "load 2.31: other programs share the processors"
};

// What a display server tells of itself.
struct DisplayDetails {
    std::string vendor;
    std::vector<std::string> extensions;
    std::vector<std::string> outputs; // the names of RANDR's, whether or not connected
};

// Why the server must be drawing with the processor and not with a graphics card: "it has no direct
// rendering"; empty if nothing speaks for it. A server on another machine tells of that one.
[[nodiscard]] std::optional<std::string> SoftwareDrawing(const DisplayDetails& display);

// What is known of a run's surroundings. Without one of them nothing is said of it.
struct RunSurroundings {
    size_t used = 1; // processors, the first of the details
    std::optional<FileSystemDetails> temporaryFolder;
    std::optional<DisplayDetails> display;
};

// Before a run. The two states may be a second apart, in which the program itself did nothing: they
// tell what others do just now.
// Ids: load, governor, battery, throttled, virtual-machine, steal, sibling-busy, sibling-invisible,
// temporary-in-memory, software-display, asleep.
[[nodiscard]] std::vector<RunWarning> WarningsBeforeRun(const MachineDetails& details,
    const MachineState& earlier, const MachineState& now, const RunSurroundings& surroundings);

// Of what happened while it ran: battery, throttled, steal, sibling-busy, asleep.
[[nodiscard]] std::vector<RunWarning> WarningsOfRun(const MachineDetails& details,
    const MachineState& before, const MachineState& after, size_t used);
