// Where a run without windows reports to.
#pragma once

#include <Looper.h>

#include <string>

// How a run ended.
struct RunOutcome {
    bool finished = false;
    int signal = 0; // that ended it, if it did not finish
    const char* notStarted = nullptr; // the thread that could not be made, so that nothing was run
};

// Shows the status texts on standard output: on a terminal one line that is rewritten, else a line
// each. Quits, and with it ends its thread, at the first 'LThC'; outcome, which must outlive the
// looper, holds then which thread it was from: the benchmark or the wait for signals.
class RunLooper : public BLooper {
public:
    static constexpr char kBenchmarkThread[] = "benchmark";
    static constexpr char kSignalThread[] = "signals";

    explicit RunLooper(RunOutcome& outcome);

    void MessageReceived(BMessage* message) override;

private:
    void ShowStatus(const char* text);
    void ThreadEnded(BMessage* message);

    RunOutcome& outcome;
    const bool onTerminal;
};
