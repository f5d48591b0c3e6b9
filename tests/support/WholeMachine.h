// For tests that switch processors, or start runs that may: one at a time on the machine, however
// many copies of the suite there are, and none beside a run of its users.
#pragma once

#include "tests/support/WaitUntil.h"

#include <MachineRun.h>

// Waits until the machine is this process's; it is until the process ends. False if somebody keeps
// it for an hour.
[[nodiscard]] inline bool TakeWholeMachine()
{
    static BMachineRun sTests("tarvex-tests");
    BMachineRun run;
    return WaitUntil([&] { return sTests.Begin() == B_OK && run.Begin() == B_OK; }, 3600, 20);
}
