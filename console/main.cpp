// The benchmark without windows, for servers and scripts.
#include "console/ComparisonTable.h"
#include "console/RateTable.h"
#include "console/RunLooper.h"
#include "console/RunOptions.h"
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

enum ExitStatus { kDone, kNotWritten, kNothingRun, kLeftOut, kBusy, kSignalBase = 128 };

int Refuse(const std::string& message)
{
    fprintf(stderr, "tarvex-run: %s\n", LibPrintable(message.c_str()).c_str());
    return kNothingRun;
}

// Runs the groups and returns when the run is over or a signal has come; then no thread of it is
// left and all processors are on.
RunOutcome DriveRun(StopSignals& signals, Benchmark& benchmark)
{
    RunOutcome outcome;
    auto* looper = new RunLooper(outcome);
    auto* forSignals = new BMessenger(looper);
    auto* forBenchmark = new BMessenger(looper);
    const thread_id looperThread = looper->Run();
    signals.Go(RunLooper::kSignalThread, forSignals, B_NORMAL_PRIORITY, false);
    benchmark.Go(RunLooper::kBenchmarkThread, forBenchmark, kRunPriority, false);

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
    fprintf(stderr, "tarvex-run: another run is under way, by %s: --anyway starts a second\n",
        run.Holder().c_str());
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
    if (!outcome.finished)
        return kSignalBase + outcome.signal;
    const bool undone = benchmark.LeaveOutUndone();
    if (undone && benchmark.results.Size() == 0)
        return kLeftOut;
    printf("%s", RateTable(benchmark.results).c_str());
    if (!WriteResultsFile(options.output.c_str(), benchmark.results))
        return kNotWritten;
    return leftOut || undone ? kLeftOut : kDone;
}

int Compare(const std::vector<std::string>& files)
{
    ResultList machines;
    for (const std::string& file : files) {
        const int32 before = machines.Size();
        if (!ReadResultsFile(file.c_str(), machines))
            return Refuse("cannot read <" + file + ">");
        if (machines.Size() == before)
            return Refuse("<" + file + "> holds no results");
    }
    PrintComparison(machines, stdout);
    return kDone;
}

} // namespace

int main(int argc, char** argv)
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
