// What tarvex-run says: results on standard output, all else on standard error.
#pragma once

#include <string>

// What the program ends with. A run that signal N ended ends it with kSignalBase + N.
enum ExitStatus { kDone, kFailed, kNothingRun, kLeftOut, kBusy, kSignalBase = 128 };

// Fills in the standard files that the program was started without, so that no file that it opens
// takes their place. What is written there then fails.
void OpenStandardFiles();

// One line on standard error, under the program's name.
void Tell(const std::string& message);
// The same, for what keeps the program from its task. Returns kNothingRun.
int Refuse(const std::string& message);

// Sends on what was printed on standard output. An error is remembered for FinishOutput(): whoever
// else flushes it takes its reason away.
void FlushOutput();
// Ends the output of the program. Returns one line without a line end that says why not all of it
// could be written, or an empty text.
[[nodiscard]] std::string FinishOutput();
// Whether it is a pipe that nobody reads any more.
[[nodiscard]] bool IsOutputBroken();
