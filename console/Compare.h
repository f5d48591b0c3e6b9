// tarvex-run --compare: measured machines beside one of them.
#pragma once

#include "console/ResultText.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

struct CompareOptions {
    std::vector<std::string> files; // "-": standard input
    std::string baseline; // a file of one machine; empty: the first machine of the files
    std::optional<double> failBelow; // percent
    SortBy sort = SortBy::kTest;
    std::vector<const TestType*> tests; // empty: all
    TextFormat format = TextFormat::kTable;
    bool help = false; // is all that is asked for; then there may be no files
};

// Reads the arguments, "--compare" included, which may stand anywhere; what follows it up to the
// next option is files. Returns one line without its end that says what is wrong with them.
[[nodiscard]] std::variant<CompareOptions, std::string> ParseCompareOptions(
    const std::vector<std::string>& arguments);

// Whether the arguments ask for a comparison.
[[nodiscard]] bool IsCompareTask(const std::vector<std::string>& arguments);

struct CompareOutcome {
    int status = 0; // the program's, see CompareUsage()
    std::string message; // one line without its end for standard error; empty: none
};

// Compares, and writes the result to out. Nothing is written where a file cannot be read.
[[nodiscard]] CompareOutcome CompareTask(const std::vector<std::string>& arguments, FILE* out);

// The part of --help about it.
[[nodiscard]] std::string CompareUsage();
