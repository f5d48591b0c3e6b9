// The file that a run's results go to.
#pragma once

#include "results/Results.h"

#include <string>

// Checks before the run that the results can be written after it, and leaves an old file of that
// name as it is until all of the new one is on disk. Devices and pipes are written in place.
class OutputFile {
public:
    explicit OutputFile(const std::string& path);

    // Returns one line without a line end that says why the file cannot be written, or an empty
    // text. Leaves nothing behind.
    [[nodiscard]] std::string Check() const;

    // Writes the results. Returns false after a line on standard error, with the old file intact.
    // Moves the results' cursors.
    [[nodiscard]] bool Write(Results& results) const;

private:
    std::string path; // of the file itself where the given one is a link to it
    std::string temporary; // beside it; empty for what is written in place
};
