// What the command line asks tarvex-run to do.
#pragma once

#include "engine/Benchmark.h"

#include <string>
#include <variant>
#include <vector>

struct RunOptions {
    enum class Task { kRun, kHelp, kVersion };

    Task task = Task::kRun;
    std::vector<bool Benchmark::*> groups; // the flags to set
    std::string output; // the results file, never empty for a run
    bool anyway = false; // even if another run is under way
};

// Reads the arguments (without the program's name). Returns the options, or one line without a
// line end that says what is wrong with them. --help and --version need no other option.
[[nodiscard]] std::variant<RunOptions, std::string> ParseRunOptions(
    const std::vector<std::string>& arguments);

// The text of --help, with all group names.
[[nodiscard]] std::string RunUsage();
