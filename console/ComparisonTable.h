// The machines of results files side by side, as text for people.
#pragma once

#include "results/Comparison.h"

#include <cstdio>

// Writes for each test, in the order in which the machines name them, its name and units and a line
// for each machine that has it: the rates from the greatest processor count down, the best of them
// as percent of the first machine's best ("-" where that has none), and the machine. Line by line,
// as the whole can be many times longer than the files. Every line ends with a line end. Selects
// the first machine.
void PrintComparison(Comparison& comparison, FILE* out);
