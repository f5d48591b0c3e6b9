// SIGINT and SIGTERM as messages instead of a sudden end.
#pragma once

#include "engine/LibThread.h"

#include <csignal>

// Waits for the first of the two signals. It arrives as this thread's 'LThC', with the signal's
// number as "status". A thread of its own, so that nothing need be polled while a test is timed.
class StopSignals : public LibThread {
public:
    // Keeps both signals from this thread and all that it starts; so before any other thread.
    StopSignals();
    ~StopSignals() override;

    int32 Action() override;

private:
    sigset_t signals;
    int received = 0;
};
