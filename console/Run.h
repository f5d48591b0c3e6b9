// What the command line asks tarvex-run to do, and the task that measures.
#pragma once

#include "console/Arguments.h"
#include "engine/Benchmark.h"
#include "results/RunRecord.h"

#include <string>
#include <variant>
#include <vector>

struct RunOptions {
    enum class Task { kRun, kResume, kList, kExplain, kHelp, kVersion };

    Task task = Task::kRun;
    std::vector<bool Benchmark::*> groups; // the flags to set
    RunPlan plan; // also the keys of the groups
    std::string output; // the file to write; "-": none but standard output
    std::string label;
    TextFormat format = TextFormat::kTable; // of standard output
    bool anyway = false; // even if another run is under way
    std::string journal; // to resume
    std::vector<const TestType*> tests; // to explain
};

// Reads the arguments (without the program's name). Returns the options, or one line without a
// line end that says what is wrong with them. --help and --version need no other option. Counts of
// processors are checked against those of the machine.
[[nodiscard]] std::variant<RunOptions, std::string> ParseRunOptions(
    const std::vector<std::string>& arguments);

// Sets the flags of groups for the keys in the plan, as a journal has them. False for an unknown
// one.
[[nodiscard]] bool TakeGroups(RunOptions& options);

// What the file's ending says: ".json", ".csv", ".tsv"; all others are results files.
[[nodiscard]] std::optional<TextFormat> FormatOfFile(const std::string& path);

// The text of --help, with all group names.
[[nodiscard]] std::string RunUsage();

// Whether the run has graphics tests, and a display for them. Of one that goes on its journal is
// read.
[[nodiscard]] bool DrawsGraphics(RunOptions options);

// Measures what the options ask for, or what is missing of the run whose journal they name. Prints
// the result on standard output and writes the output file; progress and warnings go to standard
// error. Returns an ExitStatus.
[[nodiscard]] int RunTask(RunOptions options);
