// What the user is told before a run.
#pragma once

#include "foundation/LibString.h"
#include "results/TestCatalogue.h"

#include <OS.h>

#include <vector>

class LibSysInfo;

// "%d:%2.2d", minutes and seconds.
[[nodiscard]] LibString MinutesText(int32 seconds);

// How long a run will take.
struct RunEstimate {
    bool selected[kNbrTestGroups] = {};
    int32 nbrCpus = 1; // a run makes one pass for each processor count

    [[nodiscard]] int32 Seconds() const;
    [[nodiscard]] LibString Text() const; // see MinutesText()
};

// How far a run has come, by when its groups begin. Each is taken to last as long as it did the
// last time, and as the estimate has it before there was one.
class RunProgress {
public:
    RunProgress();

    // At the start of a run. Times are in microseconds, those of system_time().
    void Begin(const RunEstimate& plan, bigtime_t now);
    // When each group of each pass begins, in the run's order.
    void GroupBegins(bigtime_t now);
    // The part of the run's time that is over, 0 to 1.
    [[nodiscard]] double Share() const { return share; }
    [[nodiscard]] double SecondsLeft() const;

private:
    double seconds[kNbrTestGroups]; // that each takes in one pass
    std::vector<size_t> groups; // of a pass
    size_t nbrPasses = 0;
    size_t nbrBegun = 0; // groups of all passes
    bigtime_t start = 0; // of the run
    bigtime_t groupStart = 0;
    double share = 0;
};

// True if the main screen is the one that graphics figures of different machines are compared on:
// 1024 by 768 pixels with a table of 256 colours.
[[nodiscard]] bool SuitsGraphicsTests(const LibSysInfo& info);
