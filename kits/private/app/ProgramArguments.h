// The command line, which reaches BApplication without passing through its constructor.
#pragma once

#include <string>
#include <vector>

// The process's own arguments, the program's name first, or those set below. Empty if /proc tells
// nothing.
std::vector<std::string> ProgramArguments();

// Stand in for the process's own from now on; an empty list brings those back. For tests.
void SetProgramArguments(std::vector<std::string> arguments);
