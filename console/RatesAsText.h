// A run's rates as text for people.
#pragma once

#include "results/Results.h"

#include <string>

// A line per test: its name, its units, its rate for each processor count, "2 CPU" before "1 CPU".
// A count that a test has no time for stays blank. Every line ends with a line end.
[[nodiscard]] std::string RateTable(const Results& results);
