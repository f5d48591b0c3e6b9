// The result of a run as text for people.
#pragma once

#include "results/RunRecord.h"

#include <string>

// Of a run without repeats: a line per test, its name, its units, its rate for each processor count
// in the order of the passes; "-" where it has none. With repeats a line per test and count: the
// rate, half of its interval and the variation as percents, how many times it rests on, and what
// marks it. Every line ends with a line end.
[[nodiscard]] std::string RunTable(const RunRecord& record);

// What marks a series, for people: "two speeds: 4.30 ms (45 %) and 8.40 ms (55 %), unsteady"; ""
// for none.
[[nodiscard]] std::string MarksText(const Figures& figures);

// The tests that a run with --until has left with a wider interval, each with its count:
// "Memory (1 CPU), Sieve (2 CPU)"; "" for none.
[[nodiscard]] std::string WideTests(const RunRecord& record);
