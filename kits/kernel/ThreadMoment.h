// Beside the platform's calls: what befalls a thread between two moments without its own doing, so
// that a stopwatch cannot tell it from work. Cheap enough to be read around every timing: 10
// to 25 microseconds.
#pragma once

#include "SupportDefs.h"

#include <optional>

// What the system does not tell is empty; never 0.
struct ThreadMoment {
    // Seconds in which the thread could have gone on, but others had its processor.
    std::optional<double> waited;
    // Seconds of processors that the other threads of the process have used, ended ones too.
    double others = 0;
    int processor = 0; // whose throttles these are: the system's number
    std::optional<uint64> throttles; // how often heat has slowed down its core or package
};

// Of the calling thread, and of the processor that it runs on unless one is given.
[[nodiscard]] ThreadMoment ReadThreadMoment(std::optional<int> processor = {});

struct ThreadChange {
    // Seconds in which other programs had the thread's processor while it could have gone on; 0
    // where that cannot be told. What the process's other threads used in the time may have been
    // what it waited for, so that much is taken off: less than the truth, never more. A thread
    // asleep waits for nothing, whoever delays those that it waits for.
    double waited = 0;
    bool isThrottled = false; // by the processor of both moments
};
[[nodiscard]] ThreadChange ChangeBetween(const ThreadMoment& before, const ThreadMoment& after);
