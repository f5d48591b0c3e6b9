// Other programs, as the platform's roster launches them: the desktop's own for a kind of thing.
#pragma once

#include <string>
#include <vector>

// Starts the program command[0], found along PATH, with the rest as its arguments, and does not
// wait for it. False if there is no such program. From any thread.
bool StartProgram(const std::vector<std::string>& command);
