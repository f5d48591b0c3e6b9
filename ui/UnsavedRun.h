// The last run that nobody has saved yet, in the user's data (see UserData.h): it outlives the
// program, whatever ends it. There is one for all of a user's programs, that of the last run.
#pragma once

#include <memory>
#include <string>

class Results;

class UnsavedRun {
public:
    // The run that is kept; null if there is none, or it cannot be read.
    std::unique_ptr<Results> Read();
    // Keeps the run in place of the one before, which stays, with a line on standard error, where
    // nothing can be kept.
    void Keep(const Results& run);
    // Once it is saved. Another program's run, which has taken its place meanwhile, stays.
    void Forget();

    // When the run that was kept or read ended: "2026-11-21 14:03", local time.
    [[nodiscard]] const std::string& Ended() const { return ended; }

private:
    std::string ended;
    std::string kept; // the file's contents; empty: none of this object's
};
