// A run's rates, and the machines of results files side by side, as text for people.
#pragma once

#include "results/Comparison.h"

#include <cstdio>
#include <string>

// A line per test: its name, its units, its rate for each processor count, "2 CPU" before "1 CPU".
// A count that a test has no time for stays blank. Every line ends with a line end.
[[nodiscard]] std::string RateTable(const Results& results);

// Writes for each test, in the order in which the machines name them, its name and units and a line
// for each machine that has it: the rates from the greatest processor count down, the best of them
// as percent of the first machine's best ("-" where that has none), and the machine. Line by line,
// as the whole can be many times longer than the files. Every line ends with a line end. Selects
// the first machine.
void PrintComparison(Comparison& comparison, FILE* out);
