#pragma once

#include "tests/support/TempFolder.h"
#include "tests/support/WaitUntil.h"

// The system's list, once no run that ended in the middle has processors to give back any more:
// each notes there what it has switched off.
inline std::string OnlineProcessors()
{
    using Notes = std::filesystem::directory_iterator;
    std::error_code none;
    static_cast<void>(WaitUntil([&] { return Notes("/run/tarvex", none) == Notes(); }, 10, 20));
    return ReadFile("/sys/devices/system/cpu/online");
}
