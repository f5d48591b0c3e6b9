#include "console/Run.h"

#include "console/Output.h"
#include "console/ResultText.h"
#include "console/RunLooper.h"
#include "engine/Sitting.h"
#include "engine/ThisBuild.h"
#include "foundation/LibDateTime.h"
#include "foundation/PlainText.h"
#include "results/ProbeMemory.h"
#include "results/ResultsFile.h"
#include "results/RunJournal.h"
#include "sysinfo/LibSysInfo.h"

#include <DisplayDetails.h>
#include <FindDirectory.h>
#include <MachineRun.h>
#include <Path.h>
#include <Screen.h>
#include <SleepInhibitor.h>
#include <WholeFile.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace {

// Between the two looks at what others do before the run: ten ticks of the system's clock, which is
// what a share of time needs, and some.
constexpr bigtime_t kLookMicros = 300000;

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
    // That nobody could find out is no reason not to run.
    if (run.Begin() != B_BUSY || anyway)
        return true;
    Tell("another run is under way, by " + run.Holder() + ": --anyway starts a second");
    return false;
}

// "2026-11-21T14:03:05+01:00"
std::string LocalTime()
{
    std::string zoned = LibLocalTimeText("%Y-%m-%dT%H:%M:%S%z");
    // The zone is "+0100", where the time before it has colons.
    if (zoned.size() > 5)
        zoned.insert(zoned.size() - 2, ":");
    return zoned;
}

bool HasGraphics(const RunOptions& options)
{
    return std::count(options.groups.begin(), options.groups.end(), &Benchmark::graphics) > 0;
}

// "1024x768x24"; empty without a display.
std::string DisplaySize()
{
    const BScreen screen;
    display_mode mode {};
    if (screen.GetMode(&mode) != B_OK)
        return "";
    const char* depth = screen.ColorSpace() == B_CMAP8 ? "8"
        : screen.ColorSpace() == B_RGB15               ? "15"
        : screen.ColorSpace() == B_RGB16               ? "16"
                                                       : "24";
    return std::to_string(mode.virtual_width) + "x" + std::to_string(mode.virtual_height) + "x"
        + depth;
}

// All that is known before the first test.
void Describe(RunRecord& record, const RunOptions& options)
{
    record.plan = options.plan;
    record.label = options.label;
    record.started = LocalTime();
    LibString machine;
    LibSysInfo().Description(machine);
    record.machine = machine;
    record.build = ThisBuild();
    record.details = ReadMachineDetails();
    BPath temporary;
    if (find_directory(B_COMMON_TEMP_DIRECTORY, &temporary) == B_OK)
        record.temporaryFolder = FileSystemOf(temporary.Path());
    if (HasGraphics(options)) {
        record.display = ReadDisplayDetails();
        record.displaySize = DisplaySize();
    }
}

void TellWarnings(RunRecord& record, const std::vector<RunWarning>& warnings)
{
    for (const RunWarning& warning : warnings) {
        Tell("note: " + warning.text);
        record.warnings.push_back(warning);
    }
}

// The processors of the largest pass.
size_t UsedMost(const RunPlan& plan)
{
    const auto most = std::max_element(plan.counts.begin(), plan.counts.end());
    return most != plan.counts.end() ? static_cast<size_t>(*most) : size_t(LibSysInfo().cpuCount);
}

// Looks at what others do on the machine, and says what makes the figures doubtful.
MachineState Look(RunRecord& record)
{
    const MachineState earlier = ReadMachineState();
    snooze(kLookMicros);
    const MachineState now = ReadMachineState();
    RunSurroundings surroundings;
    surroundings.used = UsedMost(record.plan);
    surroundings.temporaryFolder = record.temporaryFolder;
    surroundings.display = record.display;
    TellWarnings(record, WarningsBeforeRun(record.details, earlier, now, surroundings));
    return now;
}

// Empty, or why the journal's run cannot go on here: its times would not be this machine's.
std::string Difference(const RunRecord& journal, const RunRecord& here)
{
    if (journal.machine != here.machine
        || journal.details.processorModel != here.details.processorModel)
        return "it is of another machine <" + journal.machine + ">";
    if (journal.details.kernelRelease != here.details.kernelRelease
        || journal.details.kernelVersion != here.details.kernelVersion)
        return "it is of another kernel <" + journal.details.kernelRelease.value_or("unknown")
            + ">";
    if (journal.build.version != here.build.version || journal.build.compiler != here.build.compiler
        || journal.build.flags != here.build.flags)
        return "it is of another version <" + journal.build.version + ", " + journal.build.compiler
            + ">";
    return "";
}

bool WriteText(const std::string& path, const std::string& text)
{
    WholeFile file(path.c_str());
    if (file.Stream()) // else, and where it fails, it cannot be committed
        fwrite(text.data(), 1, text.size(), file.Stream());
    if (file.Commit())
        return true;
    fprintf(stderr, "Error writing <%s>: %s\n", path.c_str(), file.Error().c_str());
    return false;
}

bool WriteOutput(const Sitting& sitting, const std::string& path)
{
    if (path == "-")
        return true;
    if (const auto format = FormatOfFile(path))
        return WriteText(path, RunText(sitting.record, *format));
    return WriteResultsFile(path.c_str(), sitting.results);
}

// Devices and pipes have nothing beside them.
bool IsKept(const std::string& output)
{
    std::error_code error;
    const auto status = std::filesystem::status(output, error);
    return output != "-"
        && (status.type() == std::filesystem::file_type::not_found
            || status.type() == std::filesystem::file_type::regular);
}

// Fills in what is known of the passes as they come and go.
void WatchPasses(Sitting& sitting, RunJournal& journal)
{
    RunRecord& record = sitting.record;
    sitting.onSpan = [&journal](const Series& series) { journal.Add(series); };
    sitting.onPass = [&record](int32 processors, bool begins) {
        if (begins) {
            const ProcessorUse use = ProcessorsInUse();
            record.passes.push_back({ processors, use.used, use.off, ReadMachineState(), {} });
        } else {
            record.passes.back().after = ReadMachineState();
        }
    };
}

// The finished part of a run that a signal has ended.
void PrintPart(Sitting& sitting, const RunOptions& options, const std::string& journal)
{
    if (sitting.record.series.empty())
        return;
    printf("%s", RunText(sitting.record, options.format).c_str());
    FlushOutput();
    if (!journal.empty())
        Tell("the run goes on with: tarvex-run --resume " + journal);
}

int Finish(Sitting& sitting, const RunOptions& options, RunJournal& journal, bool leftOut)
{
    const bool undone = sitting.record.IsAnyUndone();
    // An output file without any figure would only take the place of an older one.
    if (undone && sitting.results.Size() == 0) {
        journal.Remove();
        return kLeftOut;
    }
    if (sitting.record.plan.untilPercent) {
        if (const std::string wide = WideTests(sitting.record); !wide.empty())
            Tell("note: not as narrow as asked for: " + wide);
    }
    printf("%s", RunText(sitting.record, options.format).c_str());
    FlushOutput();
    if (!WriteOutput(sitting, options.output))
        return kFailed;
    // Only now: until the output is on the disk the run can go on from nothing else.
    journal.Remove();
    return leftOut || undone ? kLeftOut : kDone;
}

// Measures what record lacks, and writes all of it.
int Measure(const RunOptions& options, const RunRecord& record, RunJournal& journal,
    const std::string& journalPath, const MachineState& before, bool leftOut)
{
    StopSignals signals;
    Sitting sitting(record.plan);
    sitting.record = record;
    for (bool Benchmark::*group : options.groups)
        sitting.*group = true;
    WatchPasses(sitting, journal);
    const RunOutcome outcome = DriveRun(signals, sitting);
    if (outcome.notStarted) {
        Tell("cannot start thread <" + std::string(outcome.notStarted) + ">");
        if (sitting.record.series.empty())
            journal.Remove();
        return kFailed;
    }
    // Also of a run that was ended: its probes help later ones to tell what is shared.
    KeepProbe(ProbeKey(record.details, record.build), SustainedProbe(sitting.record));
    TellWarnings(sitting.record,
        WarningsOfRun(record.details, before, ReadMachineState(), UsedMost(record.plan)));
    if (!outcome.finished) {
        if (sitting.record.series.empty())
            journal.Remove();
        PrintPart(sitting, options, journalPath);
        return kSignalBase + outcome.signal;
    }
    return Finish(sitting, options, journal, leftOut);
}

} // namespace

bool DrawsGraphics(RunOptions options)
{
    if (options.task == RunOptions::Task::kResume) {
        const auto read = ReadRunJournal(options.journal);
        const auto* journal = std::get_if<ReadJournal>(&read);
        if (!journal)
            return false;
        options.plan = journal->record.plan;
        if (!TakeGroups(options))
            return false;
    } else if (options.task != RunOptions::Task::kRun) {
        return false;
    }
    return HasGraphics(options) && BScreen(B_MAIN_SCREEN_ID).IsValid();
}

int RunTask(RunOptions options)
{
    ReadJournal resumed;
    if (options.task == RunOptions::Task::kResume) {
        auto read = ReadRunJournal(options.journal);
        if (const auto* why = std::get_if<std::string>(&read))
            return Refuse("cannot resume <" + options.journal + ">: " + *why);
        resumed = std::move(std::get<ReadJournal>(read));
        options.plan = resumed.record.plan;
        options.label = resumed.record.label;
        if (options.output.empty())
            options.output = resumed.output;
        if (!TakeGroups(options))
            return Refuse("cannot resume <" + options.journal + ">: its groups are unknown");
    }
    const bool isResumed = options.task == RunOptions::Task::kResume;
    // Before anything is measured: a run that cannot be written would be in vain.
    if (options.output != "-") {
        if (const std::string why = WholeFile::WhyNot(options.output.c_str()); !why.empty())
            return Refuse("cannot write <" + options.output + ">: " + why);
    }
    const bool leftOut = LeaveOutGraphics(options);
    if (options.groups.empty())
        return kLeftOut;
    BMachineRun run;
    if (!Begin(run, options.anyway))
        return kBusy;

    RunRecord record;
    Describe(record, options);
    if (isResumed) {
        if (const std::string why = Difference(resumed.record, record); !why.empty())
            return Refuse("cannot resume <" + options.journal + ">: " + why);
        record.series = std::move(resumed.record.series);
        record.started = resumed.record.started;
    }
    record.bestProbe = KeptProbe(ProbeKey(record.details, record.build));
    const MachineState before = Look(record);
    const BSleepInhibitor awake("A run of Tarvex");

    RunJournal journal;
    std::string journalPath = isResumed ? options.journal : "";
    if (isResumed) {
        if (const std::string why = journal.GoOn(journalPath); !why.empty())
            return Refuse("cannot resume <" + journalPath + ">: " + why);
    } else if (IsKept(options.output)) {
        journalPath = RunJournal::PathBeside(options.output);
        if (const std::string why = journal.Begin(journalPath, options.output, record);
            !why.empty())
            return Refuse("cannot write <" + journalPath + ">: " + why);
    }
    return Measure(options, record, journal, journalPath, before, leftOut);
}
