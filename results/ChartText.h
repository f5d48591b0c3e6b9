// What results windows and the chart show, as text to be pasted or to be read beside the pointer.
// UTF-8; numbers are in the "C" locale. Every line of a table ends with a line end.
#pragma once

#include "results/Comparison.h"

#include <string>

// The machine, and below it a line for each test: its name, its units, and its rate for each
// processor count, the greatest first; "-" where it has none.
[[nodiscard]] std::string ResultsAsText(const Results& run);

// The test and its unit, and below it a line for each machine in the chart's order with its rate
// for each processor count, the greatest first, and the percent of the selected machine's best, if
// there is one. "" while no test is shown.
[[nodiscard]] std::string ComparisonAsText(Comparison& comparison);

// All that is known of a machine in the chart, a line each without the last line end: its
// description; each count's rate, how many times that of one processor it is, and the percent of
// the selected machine's best; what the machine truly is and where that was read.
[[nodiscard]] std::string MachineAsText(const Comparison& comparison, const Results& machine);

// What the unit of the chart means: "Work per second: more is better", "Seconds: less is better".
// "" for a test that no version knows.
[[nodiscard]] std::string UnitAsText(const Metric& metric);
