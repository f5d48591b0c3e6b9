// Results as text, of runs and of comparisons: for people, and for other programs.
#pragma once

#include "console/Arguments.h"
#include "results/RunComparison.h"

#include <cstdio>
#include <string>

// A run for people. Of one without repeats a line per test, its name, its units, its rate for each
// processor count in the order of the passes; "-" where it has none. Of one with repeats as
// FiguresTable(). Every line ends with a line end.
[[nodiscard]] std::string RunTable(const RunRecord& record);
// A line per test and count: the rate, half of its interval and the variation as percents, how many
// times it rests on, and what marks it: "two speeds: 4.30 ms (45 %) and 8.40 ms (55 %), unsteady".
[[nodiscard]] std::string FiguresTable(const RunRecord& record);
// The run in one of the formats, of which the table is RunTable().
[[nodiscard]] std::string RunText(const RunRecord& record, TextFormat format);

// The tests that a run with --until has left with a wider interval, each with its count:
// "Memory (1 CPU), Sieve (2 CPU)"; "" for none.
[[nodiscard]] std::string WideTests(const RunRecord& record);

// Everything that the text of a comparison tells.
struct ComparedMachines {
    std::vector<MeasuredMachine> machines;
    size_t baseline = 0;
    std::vector<ComparedRow> rows; // in the order in which they are shown
};

// Writes it, row by row, as there may be a million; every line ends with a line end. The table
// shows rounded figures and what a terminal may show; the others carry the same numbers, to the
// last digit, with a point in every locale, and empty cells or null for what is not known. CSV
// quotes as RFC 4180 says; in TSV tabs and line ends of names are blanks. The JSON's keys are in
// docs/comparing.md.
void WriteComparison(const ComparedMachines& compared, TextFormat format, FILE* out);
