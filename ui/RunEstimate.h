// What the user is told before a run.
#pragma once

#include "foundation/LibString.h"
#include "results/TestCatalogue.h"

class LibSysInfo;

// How long a run will take.
struct RunEstimate {
    bool selected[kNbrTestGroups] = {};
    int32 nbrCpus = 1; // a run makes one pass for each processor count

    [[nodiscard]] int32 Seconds() const;
    // "%d:%2.2d", minutes and seconds.
    [[nodiscard]] LibString Text() const;
};

// True if the main screen is the one that graphics figures of different machines are compared on:
// 1024 by 768 pixels with a table of 256 colours.
[[nodiscard]] bool SuitsGraphicsTests(const LibSysInfo& info);
