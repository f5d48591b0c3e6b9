#include "console/RunLooper.h"

#include <Message.h>

#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

// What the main window gives the run too.
constexpr long kRunPriority = 20;

constexpr int kSignals[] = { SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGPIPE };

} // namespace

StopSignals::StopSignals()
{
    sigemptyset(&signals);
    for (const int signal : kSignals) {
        struct sigaction before = {};
        sigaction(signal, nullptr, &before);
        if (before.sa_handler != SIG_IGN)
            sigaddset(&signals, signal);
    }
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

StopSignals::~StopSignals()
{
    Kill();
}

int32 StopSignals::Action()
{
    sigwait(&signals, &received);
    return received;
}

bool StopSignals::PipeIsBroken()
{
    sigset_t pending;
    sigemptyset(&pending);
    sigpending(&pending);
    return sigismember(&pending, SIGPIPE) == 1;
}

RunLooper::RunLooper(RunOutcome& runOutcome)
    : BLooper("run"), outcome(runOutcome), onTerminal(isatty(STDOUT_FILENO) == 1)
{
}

void RunLooper::MessageReceived(BMessage* message)
{
    const char* text = nullptr;
    switch (message->what) {
        case 'BmkS':
            if (message->FindString("status", &text) == B_OK)
                ShowStatus(text);
            break;
        case 'LThC': ThreadEnded(message); break;
        default: BLooper::MessageReceived(message);
    }
}

void RunLooper::ShowStatus(const char* text)
{
    // The cursor goes back to the line's start, so that a word on standard error replaces it too.
    printf(onTerminal ? "\x1b[K%s\r" : "%s\n", text);
    // Other errors are told at the end: the run has its results file yet to write.
    if (fflush(stdout) == 0 || !StopSignals::PipeIsBroken())
        return;
    outcome.signal = SIGPIPE;
    Quit(); // deletes this and does not return
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
        printf("\x1b[K");
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
    benchmark.Kill();
    for (int32 processor = 1; processor < benchmark.results.nbrCpus; processor++)
        _kset_cpu_state_(processor, 1); // those that an ended run left off
    return outcome;
}
