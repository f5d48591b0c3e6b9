// What the main window knows of a run beside its rates.
#pragma once

#include "engine/SpanProbe.h"

#include <RunWarnings.h>

#include <string>

// What is said of a run, in a line, and what explains it.
struct RunRemark {
    std::string line; // "3 of 12 spans were shared"
    std::string more; // in lines of its own; may be empty
};

// Of warnings only that the machine slept stands in the line; the others explain. nbrSpans: those
// that were timed.
[[nodiscard]] RunRemark RemarkOf(
    int32 nbrSpans, int32 nbrShared, const std::vector<RunWarning>& warnings);

// Begin() before each run, End() after it; in between it belongs to the run's thread.
class RunWatch {
public:
    // Looks at the machine, which takes some milliseconds.
    void Begin();
    // Keeps the best probe of the run for later ones.
    RunRemark End();

    // For the run's results.
    SpanWatch* Spans() { return &spans; }

private:
    SharedSpans spans;
    MachineDetails details;
    MachineState before;
    std::string probeKey;
};
