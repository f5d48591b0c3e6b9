// tarvex-run --compare: measured machines beside one of them, as text and as pictures.
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
    std::string chart; // the picture to write; empty: none
    std::string scaling; // the same
    const TestType* test = nullptr; // of the pictures; null: see CompareUsage()
    bool help = false; // is all that is asked for; then there may be no files
};

// Reads the arguments, "--compare" included, which may stand anywhere; what follows it up to the
// next option is files. Returns one line without its end that says what is wrong with them.
[[nodiscard]] std::variant<CompareOptions, std::string> ParseCompareOptions(
    const std::vector<std::string>& arguments);

// Whether the arguments ask for a comparison.
[[nodiscard]] bool IsCompareTask(const std::vector<std::string>& arguments);
// Whether it writes pictures too; false where the arguments are wrong.
[[nodiscard]] bool DrawsPictures(const std::vector<std::string>& arguments);

struct CompareOutcome {
    int status = 0; // an ExitStatus
    std::vector<std::string> messages; // for standard error, each one line without its end
};

// Compares, and writes the pictures and then the result to out; the figures alone where there is
// one machine. Nothing is written where a file cannot be read, or a picture's place not be written.
[[nodiscard]] CompareOutcome CompareTask(const std::vector<std::string>& arguments, FILE* out);

// The part of --help about it.
[[nodiscard]] std::string CompareUsage();
