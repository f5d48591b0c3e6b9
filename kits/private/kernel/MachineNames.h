// What the machine and its processor are called, and whether it is a program of another machine.
#pragma once

#include "SystemTree.h"

#include <optional>
#include <string>
#include <string_view>

namespace kernel {
// See MachineDetails. Asks the processor's flags, the hypervisor's own files and the maker's name
// in the firmware; starts nothing.
[[nodiscard]] std::optional<std::string> VirtualMachineOf(const SystemTree& tree);

[[nodiscard]] std::optional<std::string> ContainerOf(const SystemTree& tree);

// From the text of /proc/cpuinfo: the model's name; where there is none the names of the kinds of
// core, "Cortex-A55 + Cortex-A78", or what else tells it: "POWER9", "machine 3906".
[[nodiscard]] std::optional<std::string> ProcessorModelIn(std::string_view info);
} // namespace kernel
