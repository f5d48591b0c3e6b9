#pragma once

#include "SupportDefs.h"

#include <array>
#include <string>

namespace kernel {
struct LeaseRequest {
    uint8 index;
    bool on;
};

// The process that switches processors on behalf of ours. It sends its number (a pid_t) over the
// connection, then answers each LeaseRequest that comes by an int, 0 or an error number. When the
// connection or our process ends it switches on what it or one before it has switched off, removes
// the note of that, and ends.
struct LeaseKeeper {
    int connection;
    int process; // a descriptor of ours, -1: none (a child of ours may keep the connection open)
    std::array<int, 8> switches; // descriptors, -1: none
    std::array<bool, 8> isOff;
    std::string note; // a path
};

// Starts it. Its descriptors are copies and the only ones it has; signals to our process group or
// terminal do not reach it, and it is nobody's child that would have to be waited for. 0 or an
// error number.
[[nodiscard]] int StartLeaseKeeper(LeaseKeeper keeper);

// Switches by an open switch; on again and again for a second while the system is busy with another
// one. 0 or an error number. May be called in a signal handler.
[[nodiscard]] int WriteSwitch(int file, bool on);
} // namespace kernel
