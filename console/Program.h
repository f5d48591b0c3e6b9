// tarvex-run, from its arguments to its exit status.
#pragma once

#include <functional>

// Has the whole task done elsewhere, and returns an ExitStatus.
using GoOn = std::function<int()>;

// withWindows is called, before anything that has an effect, in place of what needs windows or
// draws pictures; empty in a program that is linked with all that it takes. Returns an ExitStatus.
[[nodiscard]] int RunProgram(int argc, char** argv, const GoOn& withWindows = {});
