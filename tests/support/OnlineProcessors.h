#pragma once

#include "tests/support/TempFolder.h"
#include "tests/support/WaitUntil.h"

// The system's list, once no program that ended in the middle of a run has processors to give back
// any more.
inline std::string OnlineProcessors()
{
    static_cast<void>(
        WaitUntil([] { return system("pgrep -x tarvex-lease >/dev/null") != 0; }, 10, 20));
    return ReadFile("/sys/devices/system/cpu/online");
}
