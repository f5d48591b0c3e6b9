// The results file: a version line, then for each machine the length of its record and the record.
// It is read as well as it can be for the window, strictly for figures on which somebody will act.
#pragma once

#include "results/RunRecord.h"

#include <cstdio>
#include <string>
#include <variant>
#include <vector>

class ResultList;
class Results;

// Writes a results file of one machine at path, in place of what was there, which stays as it is
// until all of the new one is on disk; devices and pipes are written as they are. Returns false,
// with a line on standard error, if it could not be written whole; why, if given, is then the
// system's reason: "No space left on device".
[[nodiscard]] bool WriteResultsFile(
    const char* path, const Results& results, std::string* why = nullptr);

// Whether each machine has its metrics as objects, or is packed: see Results::FromRecord().
enum class MachinesAre { kWhole, kPacked };

// Appends a machine for every record of the file at path. Returns false, and says nothing, if it
// cannot be opened. What cannot be read is left out, with a line on standard error; so are machines
// that would need many times more memory than the file has bytes.
bool ReadResultsFile(const char* path, ResultList& list, MachinesAre kept = MachinesAre::kWhole);
// The same from an open file, up to its end; name stands for it in messages, and as where the
// machines were read.
void ReadResults(
    FILE* file, const char* name, ResultList& list, MachinesAre kept = MachinesAre::kWhole);

// Whether the file at path begins like a results file: a line, and the length of a record.
[[nodiscard]] bool IsResultsFile(const char* path);

// Whether the text begins like a results file: a line, and the length of a record.
[[nodiscard]] bool IsResultsText(const std::string& text);

// The text read strictly: what ReadResults() leaves out, with words on standard error, is an error
// here. A record for each machine: its description, and of each test that this version knows a
// series of one span for each processor count. The times are those of all processors first, then of
// one fewer each; one of 0 or below was not measured and has no series. Or one line without its end
// that says what is wrong with the text: a record that is cut short or is none, more than eight
// times for a test, a test twice.
[[nodiscard]] std::variant<std::vector<RunRecord>, std::string> RunsFromResults(
    const std::string& text);
