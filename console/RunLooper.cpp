#include "console/RunLooper.h"

#include <Message.h>

#include <cstdio>
#include <cstring>
#include <poll.h>
#include <unistd.h>

namespace {

// What the main window gives the run too.
constexpr long kRunPriority = 20;

// Twice a second: what a look takes, some microseconds, no test can show.
constexpr timespec kLook { 0, 500000000 };

// Of the result, which is printed only at the end.
bool IsReaderGone()
{
    // Asks for no event: an error is told unasked, as that the last reader has gone.
    pollfd output { STDOUT_FILENO, 0, 0 };
    return poll(&output, 1, 0) == 1 && (output.revents & POLLERR) != 0;
}

constexpr int kSignals[] = { SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE };

} // namespace

StopSignals::StopSignals()
{
    for (const int signal : kSignals) {
        struct sigaction before = {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN)
            sigaddset(&signals, signal);
    }
    // Blocked, a signal waits until sigtimedwait() takes it. Threads inherit this.
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

StopSignals::~StopSignals()
{
    // Here, as the base would end the thread when the members that it uses have gone.
    Kill();
}

int32 StopSignals::Action()
{
    const bool watchesPipe = sigismember(&signals, SIGPIPE) == 1;
    for (;;) {
        const int signal = sigtimedwait(&signals, nullptr, &kLook);
        if (signal > 0)
            return signal;
        if (watchesPipe && IsReaderGone())
            return SIGPIPE;
        snooze(0); // a kill point
    }
}

RunLooper::RunLooper(RunOutcome& runOutcome)
    : BLooper("run"), outcome(runOutcome), onTerminal(isatty(STDERR_FILENO) == 1)
{
}

void RunLooper::MessageReceived(BMessage* message)
{
    const char* text = nullptr;
    int32 left = -1;
    switch (message->what) {
        case 'BmkS':
            message->FindInt32("left", &left);
            if (message->FindString("status", &text) == B_OK)
                ShowStatus(text, left);
            break;
        case 'LThC': ThreadEnded(message); break;
        default: BLooper::MessageReceived(message);
    }
}

void RunLooper::ShowStatus(const char* text, int32 left)
{
    char time[32] = "";
    if (left >= 0)
        snprintf(time, sizeof time, ", %d:%02d left", (left / 60), (left % 60));
    // The cursor goes back to the line's start, so that a word on standard output replaces it too.
    fprintf(stderr, onTerminal ? "\x1b[K%s%s\r" : "%s%s\n", text, time);
}

void RunLooper::ThreadEnded(BMessage* message)
{
    const char* name = "";
    int32 status = 0;
    message->FindString("name", &name);
    message->FindInt32("status", &status);
    if (strcmp(name, kSignalThread) == 0)
        outcome.signal = status;
    else
        outcome.finished = true;
    if (onTerminal)
        fprintf(stderr, "\x1b[K");
    Quit(); // deletes this and does not return
}

RunOutcome DriveRun(StopSignals& signals, Benchmark& benchmark)
{
    RunOutcome outcome;
    auto* looper = new RunLooper(outcome);
    const BMessenger target(looper);
    const thread_id looperThread = looper->Run();
    const auto start = [&target](LibThread& thread, const char* name, long priority) {
        return thread.Go(name, new BMessenger(target), priority, false) >= B_OK;
    };
    if (looperThread < B_OK)
        outcome.notStarted = "run";
    else if (!start(signals, RunLooper::kSignalThread, B_NORMAL_PRIORITY))
        outcome.notStarted = RunLooper::kSignalThread;
    else if (!start(benchmark, RunLooper::kBenchmarkThread, kRunPriority))
        outcome.notStarted = RunLooper::kBenchmarkThread;
    if (outcome.notStarted && looper->Lock())
        looper->Quit(); // nothing else would end it; it unlocks: so this is no block

    status_t value = 0;
    wait_for_thread(looperThread, &value); // the looper has deleted itself
    // A signal ends the looper, not the run: only behind this nobody writes the results.
    benchmark.Kill();
    for (int32 processor = 1; processor < benchmark.results.nbrCpus; processor++)
        _kset_cpu_state_(processor, 1); // those that an ended run left off
    return outcome;
}
