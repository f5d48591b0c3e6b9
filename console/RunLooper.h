// A run without windows: where it reports to, and the signals that end it as messages instead of a
// sudden end.
#pragma once

#include "engine/Benchmark.h"
#include "engine/LibThread.h"

#include <Looper.h>

#include <csignal>

// Waits for the first of SIGINT, SIGTERM, SIGHUP, SIGQUIT and SIGPIPE, or until standard output is
// a pipe that nobody reads any more, which counts as SIGPIPE. It arrives as this thread's 'LThC',
// with the signal's number as "status". What the program was started to ignore (nohup) stays
// ignored.
class StopSignals : public LibThread {
public:
    // Keeps the signals from this thread and all that it starts; so before any other thread.
    StopSignals();
    ~StopSignals() override;

    int32 Action() override;

private:
    sigset_t signals {}; // none
};

// How a run ended.
struct RunOutcome {
    bool finished = false;
    int signal = 0; // that ended it, if it did not finish
    const char* notStarted = nullptr; // the thread that could not be made, so that nothing was run
};

// Shows the status texts and the time left on standard error: on a terminal one line that is
// rewritten, else a line each. Quits, and with it ends its thread, at the first 'LThC'; outcome,
// which must outlive the looper, holds then which thread it was from: the benchmark or the wait for
// signals.
class RunLooper : public BLooper {
public:
    static constexpr char kBenchmarkThread[] = "benchmark";
    static constexpr char kSignalThread[] = "signals";

    explicit RunLooper(RunOutcome& outcome);

    void MessageReceived(BMessage* message) override;

private:
    void ShowStatus(const char* text, int32 left);
    void ThreadEnded(BMessage* message);

    RunOutcome& outcome;
    const bool onTerminal;
};

// Runs the groups and returns when the run is over or a signal has come, or at once if a thread of
// it cannot be made; then no thread of it is left and all processors are on.
[[nodiscard]] RunOutcome DriveRun(StopSignals& signals, Benchmark& benchmark);
