// The benchmark without windows, for servers and scripts.
#include "console/Compare.h"
#include "console/RatesAsText.h"
#include "console/RunLooper.h"
#include "console/RunOptions.h"
#include "engine/Sitting.h"
#include "foundation/Utf8.h"
#include "results/ResultsFile.h"

#include <MachineRun.h>
#include <Screen.h>
#include <WholeFile.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace {

enum ExitStatus { kDone, kFailed, kNothingRun, kLeftOut, kBusy, kSignalBase = 128 };

int gOutputError = 0;

// Fills in those that the program was started without, so that no file that it opens takes their
// place. What is written there then fails.
void OpenStandardFiles()
{
    FILE* file = nullptr;
    do { // never closed, but for the first one that is none of the three
        file = fopen("/dev/null", "r");
    } while (file != nullptr && fileno(file) <= STDERR_FILENO);
    if (file != nullptr)
        fclose(file);
}

// Sends on what was printed. An error is remembered for FinishOutput(): whoever else flushes
// standard output takes its reason away.
void FlushOutput()
{
    errno = 0;
    const bool isSent = fflush(stdout) == 0 && ferror(stdout) == 0;
    if (!isSent && gOutputError == 0)
        gOutputError = errno != 0 ? errno : EIO;
}

// Ends the output of the program. Returns one line without a line end that says why not all of it
// could be written to standard output, or an empty text.
std::string FinishOutput()
{
    FlushOutput();
    if (gOutputError == 0)
        return "";
    return std::string("cannot write <standard output>: ") + strerror(gOutputError);
}

void Tell(const std::string& message)
{
    fprintf(stderr, "tarvex-run: %s\n", LibPrintable(message.c_str()).c_str());
}

int Refuse(const std::string& message)
{
    Tell(message);
    return kNothingRun;
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
    Sitting sitting(RunPlan {});
    for (bool Benchmark::*group : options.groups)
        sitting.*group = true;
    const RunOutcome outcome = DriveRun(signals, sitting);
    if (outcome.notStarted) {
        Tell("cannot start thread <" + std::string(outcome.notStarted) + ">");
        return kFailed;
    }
    if (!outcome.finished)
        return kSignalBase + outcome.signal;
    const bool undone = sitting.record.IsAnyUndone();
    if (undone && sitting.results.Size() == 0)
        return kLeftOut;
    printf("%s", RateTable(sitting.results).c_str());
    FlushOutput();
    if (!WriteResultsFile(options.output.c_str(), sitting.results))
        return kFailed;
    return leftOut || undone ? kLeftOut : kDone;
}

int Compare(const std::vector<std::string>& arguments)
{
    const CompareOutcome outcome = CompareTask(arguments, stdout);
    if (!outcome.message.empty())
        Tell(outcome.message);
    return outcome.status;
}

int Do(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (IsCompareTask(arguments))
        return Compare(arguments);
    auto parsed = ParseRunOptions(arguments);
    if (const auto* message = std::get_if<std::string>(&parsed))
        return Refuse(*message);
    auto& options = std::get<RunOptions>(parsed);
    if (const std::string restored = restore_processors(); !restored.empty())
        fprintf(stderr, "tarvex-run: %s\n", restored.c_str());
    switch (options.task) {
        case RunOptions::Task::kHelp:
            printf("%s\n       %s", RunUsage().c_str(), CompareUsage().c_str());
            return kDone;
        case RunOptions::Task::kVersion: printf("tarvex-run %s\n", TARVEX_VERSION); return kDone;
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
