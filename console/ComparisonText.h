// A comparison of machines as text: for people, and for other programs.
#pragma once

#include "results/RunComparison.h"

#include <cstdio>

enum class TextFormat { kTable, kCsv, kTsv, kJson };

// Everything that the text tells.
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
