// The file that a run's results go to.
#pragma once

#include <string>

// Whether WriteResultsFile() will be able to write there, asked before a run that takes minutes.
// Returns one line without a line end that says why it will not, or an empty text. Leaves nothing
// behind.
[[nodiscard]] std::string CheckOutput(const std::string& path);
