// The text of a results file, read strictly, for figures on which somebody will act. What the
// window reads as well as it can, and with words on standard error, is an error here.
#pragma once

#include "results/RunRecord.h"

#include <string>
#include <variant>
#include <vector>

// Whether the text begins like a results file: a line, and the length of a record.
[[nodiscard]] bool IsResultsText(const std::string& text);

// A record for each machine: its description, and of each test that this version knows a series of
// one span for each processor count. The times are those of all processors first, then of one fewer
// each; one of 0 or below was not measured and has no series. Or one line without its end that says
// what is wrong with the text: a record that is cut short or is none, more than eight times for a
// test, a test twice.
[[nodiscard]] std::variant<std::vector<RunRecord>, std::string> RunsFromResults(
    const std::string& text);
