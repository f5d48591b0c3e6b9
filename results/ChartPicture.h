// The comparison's chart as a file.
#pragma once

#include "results/Comparison.h"
#include "results/RunComparison.h"

// Writes the chart, with the test's name and the legend above it, as SVG, PNG or PDF, as path ends,
// on a white ground: names in full up to some 120 letters, and as high as its machines need. Where
// these are more than some 450, a line below says how many are missing. The chart shows what the
// comparison does; a test must have been chosen that its first machine has. Whoever shares the
// comparison holds its lock. Needs no display. False, and what was there stays, with a line on
// standard error, if it could not be written.
[[nodiscard]] bool WriteChartPicture(const char* path, Comparison& comparison);

// The same chart of those measured machines that have the test, under their names, the baseline's
// in blue. The colours are those of 1 to 8 processors or, where a machine was measured with more,
// of the counts that there are; of more than eight the least and the greatest, and a line below
// says so. Returns why it could not be written, and what was there stays; else an empty text.
[[nodiscard]] std::string WriteMachinesChart(const char* path,
    const std::vector<MeasuredMachine>& machines, size_t baseline, const TestType& test);
