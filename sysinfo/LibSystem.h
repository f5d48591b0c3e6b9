// The operating system as a whole.
#pragma once

#include "foundation/LibString.h"

#include <string>

struct MachineDetails;

// The machine as other programs name it, a line each: the processors' model, all of the memory and
// the kernel, as far as the system tells: "AMD EPYC 7763\n31.3 GB of memory\nLinux 6.1.0-13-amd64".
// The description of a run has limits and names of its own instead.
[[nodiscard]] std::string LibMachineText(const MachineDetails& details);
// Sets version to the operating system's own short version text. Leaves it as it was where the
// system does not say.
void LibGetOSVersion(LibString& version);
// Starts the system's shutdown tool, which ends or restarts the machine when and if it sees fit,
// and returns at once.
void LibShutdown(bool restart);
