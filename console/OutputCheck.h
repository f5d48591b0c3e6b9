// The file that a run's results go to, and standard output.
#pragma once

#include <string>

// Whether WriteResultsFile() will be able to write there, asked before a run that takes minutes.
// Returns one line without a line end that says why it will not, or an empty text. Leaves nothing
// behind.
[[nodiscard]] std::string CheckOutput(const std::string& path);

// Fills in standard input, output and error where the program was started without them, so that no
// file that it opens takes their place. What is written there then fails.
void OpenStandardFiles();

// Ends the output of the program. Returns one line without a line end that says why not all of it
// could be written to standard output, or an empty text.
[[nodiscard]] std::string FinishOutput();
