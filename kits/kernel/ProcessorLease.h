// Switching processors through the system, as a lease that ends with the process.
#pragma once

#include "SupportDefs.h"

#include <array>
#include <string>
#include <vector>

namespace kernel {
// Up to eight processors' switches. A small process of its own does the switching on request, so it
// always knows what is off, and switches that on again when the connection ends, in whatever way
// this process does. It starts with the first request. Not safe for use by two threads at once.
class ProcessorLease {
public:
    // The switches below root of the processors with these numbers.
    ProcessorLease(const std::string& root, const std::vector<int>& numbers);
    // Switches on again what is off, a little later.
    ~ProcessorLease();
    ProcessorLease(const ProcessorLease&) = delete;
    ProcessorLease& operator=(const ProcessorLease&) = delete;

    // Whether the program may use the switch of the processor at this index of numbers.
    [[nodiscard]] bool CanSwitch(int32 index) const;
    // 0, or the system's error number if it refused.
    [[nodiscard]] int Set(int32 index, bool on);

private:
    [[nodiscard]] int Start();
    void Stop();
    [[nodiscard]] bool Ask(int32 index, bool on, int& answer);

    static constexpr int32 kMost = 8;
    std::array<int, kMost> fSwitches; // descriptors; -1: may not be used
    std::array<bool, kMost> fIsOff {};
    int fConnection = -1;
};
} // namespace kernel
