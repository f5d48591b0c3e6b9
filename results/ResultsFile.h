// The results file: a version line, then for each machine the length of its record and the record.
#pragma once

class Results;

// Writes a results file of one machine at path, in place of what was there. Returns false, with a
// line on standard error, if it could not be written whole. Moves the results' cursors.
[[nodiscard]] bool WriteResultsFile(const char* path, Results& results);
