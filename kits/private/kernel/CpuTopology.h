// What the system tells about its processors. Nothing else reads it.
#pragma once

#include "SupportDefs.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kernel {
// Processors with greater numbers are left out: a damaged list must not cost all memory.
constexpr int kMaxProcessorNumber = 8191;

struct CpuProcessor {
    int number = 0; // the system's
    bool isOnline = true;
    bool hasSwitch = false; // there is a file to switch it by
    int sibling = 0; // how many processors that are on precede it in the same core
    int64 capacity = 0; // the system's measure of its speed; 0: not told
    int64 maxClock = 0; // Hz; 0: not told
};

enum class InstructionSet { kX86, kArm, kOther };

struct CpuTopology {
    std::vector<CpuProcessor> processors; // present ones, by number; at least one
    InstructionSet instructions = InstructionSet::kX86; // also where the system tells nothing
    std::string vendor; // "GenuineIntel"; "" for a processor of another kind
    std::string modelName;
    int family = 0;
    int model = 0;
    int stepping = 0; // the revision of a processor that is no x86
    // Hz; 0: not told. What the maker prints in the model's name, else the highest clock, else
    // what the clock is just now. It is part of what identifies a machine, so it must be the same
    // in every run: the name cannot change, the highest clock only with the machine's set-up, and
    // the third is constant where there is neither (a virtual machine). Arm tells but the second.
    int64 clock = 0;
};

// Reads root/proc and root/sys (root "": the running system).
[[nodiscard]] CpuTopology ReadCpuTopology(const std::string& root);

// Microseconds for which each processor that is on has not been idle, by its number.
[[nodiscard]] std::map<int, bigtime_t> ReadActiveTimes(const std::string& root);

// The file below root that switches a processor: "0" is off, "1" is on.
[[nodiscard]] std::string ProcessorSwitchPath(const std::string& root, int number);

// The numbers of a list like "0-3,8", in the order given. What is damaged is left out.
[[nodiscard]] std::vector<int> ParseCpuList(std::string_view list);

// Those of a mask in 32-bit words, the highest first, like "00000001,00000101": 0, 8 and 32.
[[nodiscard]] std::vector<int> ParseCpuMask(std::string_view mask);

// The clock at the end of a model's name like "Intel(R) Pentium(R) 4 CPU 3.00GHz" in Hz, or 0.
[[nodiscard]] int64 ClockInModelName(std::string_view name);
} // namespace kernel
