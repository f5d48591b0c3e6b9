// What tarvex-run says: results on standard output, all else on standard error.
#pragma once

#include <string>

// What the program ends with; scripts rely on the numbers.
enum ExitStatus {
    kDone,
    kFailed, // something could not be written or started
    kNothingRun, // wrong arguments, or a file that cannot be read or written
    kLeftOut, // a run: done but for some tests
    kBusy, // a run: another one is under way
    kFell = 4, // a comparison: a test became slower
    kCannotTell = 5, // a comparison: of something nothing can be told
    kSignalBase = 128, // and the number of the signal that ended a run
};

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
