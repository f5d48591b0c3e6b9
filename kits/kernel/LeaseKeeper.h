#pragma once

#include "SupportDefs.h"

#include <array>

namespace kernel {
struct LeaseRequest {
    uint8 index;
    bool on;
};

// The process that switches processors on behalf of ours. It answers each LeaseRequest that comes
// over the connection by an int, 0 or an error number; when the connection or our process ends it
// switches on what it or one before it has switched off, and ends.
struct LeaseKeeper {
    int connection;
    int process; // a descriptor of ours, -1: none (a child of ours may keep the connection open)
    std::array<int, 8> switches; // descriptors, -1: none
    std::array<bool, 8> isOff;
};

// Starts it. Its descriptors are copies and the only ones it has; signals to our process group or
// terminal do not reach it, and it is nobody's child that would have to be waited for. 0 or an
// error number.
[[nodiscard]] int StartLeaseKeeper(LeaseKeeper keeper);
} // namespace kernel
