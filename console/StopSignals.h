// The signals that end a program as messages instead of a sudden end.
#pragma once

#include "engine/LibThread.h"

#include <atomic>
#include <csignal>

// Waits for the first of SIGINT, SIGTERM, SIGHUP, SIGQUIT and SIGPIPE. It arrives as this thread's
// 'LThC', with the signal's number as "status". A thread of its own, so that nothing need be polled
// while a test is timed. What the program was started to ignore (nohup) stays ignored.
class StopSignals : public LibThread {
public:
    // Keeps the signals from this thread and all that it starts; so before any other thread.
    StopSignals();
    ~StopSignals() override;

    int32 Action() override;

    // Whether the calling thread has just written into a pipe that nobody reads any more: that
    // signal is for the thread alone.
    [[nodiscard]] static bool PipeIsBroken();

private:
    sigset_t signals;
    int received = 0;
    std::atomic<bool> isEnding { false };
};
