// How long a run will take.
#pragma once

#include "foundation/LibString.h"
#include "ui/TestGroups.h"

struct RunEstimate {
    bool selected[kNbrTestGroups] = {};
    int32 nbrCpus = 1; // a run makes one pass for each processor count

    [[nodiscard]] int32 Seconds() const;
    // "%d:%2.2d", minutes and seconds.
    [[nodiscard]] LibString Text() const;
};
