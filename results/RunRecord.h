// All that a run of tarvex-run measured: every span in order, for each test and processor count.
// Estimates, marks and verdicts are worked out from it, never kept in it.
#pragma once

#include "results/Statistics.h"
#include "results/TestCatalogue.h"

#include <RunWarnings.h>

#include <deque>
#include <limits>
#include <optional>
#include <string>
#include <vector>

// How long two fixed loops take at a moment, in seconds; 0: not timed. Both are as slow as the
// clock of the core is. Only the first has to wait while the core's other hardware thread works,
// also where a virtual machine hides that thread: so their ratio tells a shared core at any clock.
struct Probe {
    double core = 0; // additions side by side, more than half a core can do
    double clock = 0; // additions that each wait for the one before: a cycle each
};

// One timing of a test's work, in seconds.
struct Span {
    double seconds = 0; // the stopwatch's, less what the test's own loop costs
    double work = 0; // units done in it; 0: the figure is the time itself
    Probe probeBefore; // directly before and after it
    Probe probeAfter;
    // Seconds of it in which other programs had the thread's processor, see ThreadChange; 0 where
    // another program's work is part of the test's.
    double waited = 0;
    bool isThrottled = false; // the clock was held down meanwhile, by the system's own count
    std::optional<double> joules; // of the processor package, where it can be read
};

// A test at one processor count.
struct Series {
    const TestType* test = nullptr; // of the catalogue
    int32 processors = 0;
    std::vector<Span> spans;
    std::string undone; // why its work was not done: then it has no figure. Else empty.
};

// What the probes of this processor model ever were for long, see SustainedProbe(): the least.
constexpr Probe kUnknownBest { std::numeric_limits<double>::infinity(),
    std::numeric_limits<double>::infinity() };

// Whether a probe says that the core was somebody else's too, or the thread had to wait for it.
// Where the clock was not timed a slow one counts as shared.
constexpr double kSharedProbe = 1.15; // times as long as the best, at the clock of the moment
// Of the span's time. On a busy machine spans of Ackermann's work that waited for less varied by 1
// to 3 percent, all of them together by 60 to 160.
constexpr double kSharedWait = 0.02;
[[nodiscard]] bool IsShared(const Span& span, const Probe& best);

// The seconds that each span would have taken for the work of the first: tests that run for a fixed
// time do different work in each.
[[nodiscard]] std::vector<double> TimesOf(const Series& series);
// Those of the spans that were neither shared nor throttled, at the best clock: docs/measuring.md
// says how much that steadies them. A single span, one without probes and all where no best clock
// is known keep theirs, as shared ones do: nobody knows what they would have taken alone.
[[nodiscard]] std::vector<double> CleanTimesOf(const Series& series, const Probe& best);

// Of tests the sittings of which lie further apart than this (see LeastDifference()) all figures
// are marked wide.
inline constexpr double kWideDifference = 0.05;

// What the spans of a series say together.
struct Figures {
    statistics::Summary summary; // of the clean times where there are six, else of all
    statistics::Marks marks; // of the same times; shared: the summary rests on shared ones too
    int32 shared = 0; // spans that were shared or throttled
};
// Nothing for a series without spans, or with one whose work took no time.
[[nodiscard]] std::optional<Figures> FiguresOf(const Series& series, const Probe& best);
// The marks in words, "shared (2 of 6), unsteady" where the second argument is " (2 of 6)"; of two
// speeds both and their shares. Empty without any.
[[nodiscard]] std::string MarksText(
    const statistics::Marks& marks, const std::string& ofShared = "");
// Whether the interval of the estimate is known, from clean spans, and narrower than this.
[[nodiscard]] bool IsNarrow(const Series& series, const Probe& best, double percent);

// What a span's time means in the test's unit: work per second, or the seconds themselves.
[[nodiscard]] double RateOf(const Series& series, double seconds);

// What was asked for.
struct RunPlan {
    std::vector<std::string> groups; // their keys
    // Of processors, in the order of the passes; empty: from all down to one.
    std::vector<int32> counts;
    int32 repeats = 1; // 1 to 100 spans for each test and count
    std::optional<double> untilPercent; // instead of repeats: see kLeastUntil
};
constexpr int32 kMostRepeats = 100;
constexpr int32 kLeastUntil = 6; // repeats of a test that ends when its interval is narrow enough
constexpr int32 kMostUntil = 50;

// What is true of all spans at one processor count.
struct PassRecord {
    int32 processors = 0;
    std::vector<int> used; // the system's numbers
    std::vector<int> off; // switched off meanwhile; others that were left are on, but not used
    MachineState before; // nothing of it is read for a pass that was not finished
    MachineState after;
};

// What made the program.
struct BuildDetails {
    std::string version; // of Tarvex
    std::string compiler; // "GNU 12.2.0"
    std::string flags; // of the kernels
};

// Everything but plan, series and bestProbe may be empty.
struct RunRecord {
    RunPlan plan;
    std::string label; // the user's name for the machine or the run
    std::string started; // "2026-11-21T14:03:05+01:00"
    std::string machine; // the description that results files hold
    BuildDetails build;
    MachineDetails details;
    std::vector<RunWarning> warnings; // before the run, and of it
    std::optional<DisplayDetails> display; // where graphics were drawn
    std::string displaySize; // "1024x768x24"
    std::optional<FileSystemDetails> temporaryFolder;
    std::vector<PassRecord> passes;
    std::deque<Series> series; // in the order of the first measurement; references to one stay
    Probe bestProbe = kUnknownBest;

    // The series of a test at a count, made if there is none.
    Series& At(const TestType& test, int32 processors);
    [[nodiscard]] const Series* Find(const TestType& test, int32 processors) const;
    // Whether some test's work was not done.
    [[nodiscard]] bool IsAnyUndone() const;
};

constexpr size_t kLeastProbes = 16;
// The lower quartiles of a run's probes; kUnknownBest where it has less than kLeastProbes. Not the
// shortest: a clock that rises for a moment would make all other spans look slow.
[[nodiscard]] Probe SustainedProbe(const RunRecord& record);
// What both had at best.
[[nodiscard]] Probe BestOf(const Probe& a, const Probe& b);
// The median seconds of the clock's loop; nothing where there are so few.
[[nodiscard]] std::optional<double> MedianClock(const RunRecord& record);
