// The benchmark without windows, for servers and scripts.
#include "console/ComparisonTable.h"
#include "console/RateTable.h"
#include "console/RunLooper.h"
#include "console/RunOptions.h"
#include "console/StandardFiles.h"
#include "console/StopSignals.h"
#include "foundation/Utf8.h"
#include "results/ResultsFile.h"

#include <MachineRun.h>
#include <Screen.h>
#include <WholeFile.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

// What the main window gives the run too.
constexpr long kRunPriority = 20;

enum ExitStatus { kDone, kFailed, kNothingRun, kLeftOut, kBusy, kSignalBase = 128 };

void Tell(const std::string& message)
{
    fprintf(stderr, "tarvex-run: %s\n", LibPrintable(message.c_str()).c_str());
}

int Refuse(const std::string& message)
{
    Tell(message);
    return kNothingRun;
}

// Runs the groups and returns when the run is over or a signal has come, or at once if a thread of
// it cannot be made; then no thread of it is left and all processors are on.
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

// Takes the graphics tests out of a run that has nowhere to draw, with a line on standard error.
// Returns whether it did.
bool LeaveOutGraphics(RunOptions& options)
{
    const auto graphics =
        std::find(options.groups.begin(), options.groups.end(), &Benchmark::graphics);
    if (graphics == options.groups.end() || BScreen(B_MAIN_SCREEN_ID).IsValid())
        return false;
    std::erase(options.groups, &Benchmark::graphics);
    const char* wayland = getenv("WAYLAND_DISPLAY");
    const bool isWayland = wayland && wayland[0] && !getenv("DISPLAY");
    fprintf(stderr, "tarvex-run: no display%s: the tests of <graphics> are left out\n",
        isWayland ? " (a Wayland session needs Xwayland)" : "");
    return true;
}

// Begins it, unless another run is under way and nobody said to start a second.
bool Begin(BMachineRun& run, bool anyway)
{
    if (run.Begin() != B_BUSY || anyway)
        return true;
    Tell("another run is under way, by " + run.Holder() + ": --anyway starts a second");
    return false;
}

int Run(RunOptions& options)
{
    if (const std::string why = WholeFile::WhyNot(options.output.c_str()); !why.empty())
        return Refuse("cannot write <" + options.output + ">: " + why);
    const bool leftOut = LeaveOutGraphics(options);
    if (options.groups.empty())
        return kLeftOut;
    BMachineRun run;
    if (!Begin(run, options.anyway))
        return kBusy;

    StopSignals signals;
    Benchmark benchmark;
    for (bool Benchmark::*group : options.groups)
        benchmark.*group = true;
    const RunOutcome outcome = DriveRun(signals, benchmark);
    if (outcome.notStarted) {
        Tell("cannot start thread <" + std::string(outcome.notStarted) + ">");
        return kFailed;
    }
    if (!outcome.finished)
        return kSignalBase + outcome.signal;
    const bool undone = benchmark.LeaveOutUndone();
    if (undone && benchmark.results.Size() == 0)
        return kLeftOut;
    printf("%s", RateTable(benchmark.results).c_str());
    FlushOutput();
    if (!WriteResultsFile(options.output.c_str(), benchmark.results))
        return kFailed;
    return leftOut || undone ? kLeftOut : kDone;
}

int Compare(const std::vector<std::string>& files)
{
    Comparison comparison;
    for (const std::string& file : files) {
        const int32 before = comparison.machines.Size();
        if (!comparison.Load({ file.c_str() }))
            return Refuse("cannot read <" + file + ">");
        if (comparison.machines.Size() == before)
            return Refuse("<" + file + "> holds no results");
    }
    PrintComparison(comparison, stdout);
    return kDone;
}

int Do(int argc, char** argv)
{
    auto parsed = ParseRunOptions({ argv + 1, argv + argc });
    if (const auto* message = std::get_if<std::string>(&parsed))
        return Refuse(*message);
    auto& options = std::get<RunOptions>(parsed);
    if (const std::string restored = restore_processors(); !restored.empty())
        fprintf(stderr, "tarvex-run: %s\n", restored.c_str());
    switch (options.task) {
        case RunOptions::Task::kHelp: printf("%s", RunUsage().c_str()); return kDone;
        case RunOptions::Task::kVersion: printf("tarvex-run %s\n", TARVEX_VERSION); return kDone;
        case RunOptions::Task::kCompare: return Compare(options.files);
        case RunOptions::Task::kRun: break;
    }
    return Run(options);
}

} // namespace

int main(int argc, char** argv)
{
    OpenStandardFiles();
    const int status = Do(argc, argv);
    const std::string why = FinishOutput();
    if (why.empty() || status > kSignalBase)
        return status;
    Tell(why);
    return status == kNothingRun ? kNothingRun : kFailed;
}
