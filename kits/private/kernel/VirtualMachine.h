// Whether the machine is a program of another.
#pragma once

#include "SystemTree.h"

namespace kernel {
// See MachineDetails. Asks the processor's flags, the hypervisor's own files and the maker's name
// in the firmware; starts nothing.
[[nodiscard]] std::optional<std::string> VirtualMachineOf(const SystemTree& tree);

[[nodiscard]] std::optional<std::string> ContainerOf(const SystemTree& tree);
} // namespace kernel
