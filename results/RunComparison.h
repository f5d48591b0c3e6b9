// Measured machines beside one of them: a row for each test, processor count and machine, and what
// may be said of it.
#pragma once

#include "results/MeasuredMachines.h"
#include "results/Verdict.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

// One side of a row: what was measured there.
struct ComparedSide {
    std::optional<double> rate; // in the test's unit; nothing where it was not measured
    int32 n = 0; // times that it rests on
    statistics::Marks marks;
};

struct ComparedRow {
    const TestType* test = nullptr;
    int32 processors = 0;
    size_t machine = 0; // the candidate's place among the machines
    ComparedSide baseline;
    ComparedSide candidate;
    statistics::Judgement judgement;
    // The candidate's speed in percent of the baseline's: above 100 is better in every test, also
    // in those whose figure is in seconds. Nothing where one side was not measured.
    std::optional<double> percent;
    std::string why; // nothing can be told; else empty
};

enum class SortBy {
    kTest, // as the catalogue has them, all processors first, then the machines in their order
    kPercent, // the worst first, those without one last
    kName, // of the machine
};

// Of each machine the best probe that any run of the same description and processor model knows: a
// sitting that was slow throughout does not know it, and by its own best would pass for
// undisturbed.
[[nodiscard]] std::vector<Probe> BestProbes(const std::vector<MeasuredMachine>& machines);

// Which tests are compared.
using TestFilter = std::function<bool(const TestType&)>;

// The rows of all machines but the baseline (its place among them), in the order of SortBy::kTest.
// Compared are equal processor counts alone. There is a row for each test that one of the two has
// at a count that both have; a machine without such a count has none.
//
// Nothing can be told of a row where, in this order: one side was not measured, or did not do its
// work; the amount of work is not comparable; version of Tarvex, compiler (or its flags) or, for
// graphics, display (server and size) are not the same; one side has under six repeats, or so few
// that no difference could pass, see statistics::Judge(); one side is marked, whichever mark it is.
// The times are those on which the figures rest, see FiguresOf() and BestProbes(). All rows
// together are one table for Holm's correction.
[[nodiscard]] std::vector<ComparedRow> CompareMachines(
    const std::vector<MeasuredMachine>& machines, size_t baseline, const TestFilter& isWanted);

// The clock of a machine in percent of the baseline's, by the median of their probes' clocks: rows
// of clean spans leave this difference out. Nothing where the two are not of the same description
// and processor model, or the probes of one are too few.
[[nodiscard]] std::optional<double> ClockPercent(
    const RunRecord& baseline, const RunRecord& record);

void SortRows(
    std::vector<ComparedRow>& rows, SortBy by, const std::vector<MeasuredMachine>& machines);

// What a build that must not become slower is told.
enum class BuildCheck { kPassed, kFell, kCannotTell };
// kFell: a row is slower, for real, by more than so many percent; kCannotTell: none is, but of a
// row nothing can be told, or a machine but the baseline has no row.
[[nodiscard]] BuildCheck CheckBuild(
    const std::vector<ComparedRow>& rows, size_t machines, double percent);

// "faster", "slower", "no real difference", "cannot tell".
[[nodiscard]] const char* VerdictText(statistics::Verdict verdict);
