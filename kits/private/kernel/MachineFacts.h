// What the system tells about itself, besides the list of its processors: its versions and memory,
// what the machine and its processor are called, whether it is a program of another machine.
#pragma once

#include "CpuTopology.h"
#include "OS.h"
#include "SupportDefs.h"
#include "SystemTree.h"

#include <optional>
#include <string>
#include <string_view>

namespace kernel {
struct KernelVersion {
    std::string name; // "Linux 6.1.0-13-amd64"
    std::string buildDate; // "Jan 31 2024", "" if the text has none
    std::string buildTime; // "23:59:59", likewise
};

struct MachineFacts {
    KernelVersion version;
    int64 totalBytes = 0; // memory
    int64 usedBytes = 0; // that could not be had without paging out
    bigtime_t bootTime = 0; // microseconds since 1970
};

// Reads root/proc (root "": the running system). What is missing there stays as above.
[[nodiscard]] MachineFacts ReadMachineFacts(const std::string& root);

// Takes the text of /proc/version apart.
[[nodiscard]] KernelVersion ParseKernelVersion(std::string_view text);

// The platform's name for a processor, by its maker, family and model. For one that the list does
// not have: the maker's plain value, B_CPU_X86 for makers without one. B_CPU_ARM for every Arm; 0,
// which the platform has no name for, for kinds that came after it (POWER, z/Architecture).
[[nodiscard]] cpu_type CpuTypeOf(const CpuTopology& topology);

// The reference clock of the running machine's bus in Hz as an x86 processor tells it, 0 where it
// does not (older ones, most virtual machines), nor on processors of other kinds.
[[nodiscard]] int64 ReadBusClock();

// See MachineDetails. Asks the processor's flags, the hypervisor's own files and the maker's name
// in the firmware; starts nothing.
[[nodiscard]] std::optional<std::string> VirtualMachineOf(const SystemTree& tree);

[[nodiscard]] std::optional<std::string> ContainerOf(const SystemTree& tree);

// From the text of /proc/cpuinfo: the model's name; where there is none the names of the kinds of
// core, "Cortex-A55 + Cortex-A78", or what else tells it: "POWER9", "machine 3906".
[[nodiscard]] std::optional<std::string> ProcessorModelIn(std::string_view info);
} // namespace kernel
