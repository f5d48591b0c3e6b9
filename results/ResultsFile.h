// The results file: a version line, then for each machine the length of its record and the record.
#pragma once

#include <cstdio>

class ResultList;
class Results;

// Writes a results file of one machine at path, in place of what was there, which stays as it is
// until all of the new one is on disk; devices and pipes are written as they are. Returns false,
// with a line on standard error, if it could not be written whole.
[[nodiscard]] bool WriteResultsFile(const char* path, const Results& results);

// Appends a machine for every record of the file at path. Returns false, and says nothing, if it
// cannot be opened. What cannot be read is left out, with a line on standard error; so are machines
// that would need many times more memory than the file has bytes.
bool ReadResultsFile(const char* path, ResultList& list);
// The same from an open file, up to its end; name stands for it in messages, and as where the
// machines were read.
void ReadResults(FILE* file, const char* name, ResultList& list);

// Whether the file at path begins like a results file: a line, and the length of a record.
[[nodiscard]] bool IsResultsFile(const char* path);
