// Standard input, output and error of a program that scripts start.
#pragma once

#include <string>

// Fills in those that the program was started without, so that no file that it opens takes their
// place. What is written there then fails.
void OpenStandardFiles();

// Sends on what was printed. An error is remembered for FinishOutput(): whoever else flushes
// standard output takes its reason away.
void FlushOutput();

// Ends the output of the program. Returns one line without a line end that says why not all of it
// could be written to standard output, or an empty text.
[[nodiscard]] std::string FinishOutput();
