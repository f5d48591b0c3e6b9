// The operating system as a whole.
#pragma once

#include "foundation/LibString.h"

// Sets version to the operating system's own short version text. Leaves it as it was where the
// system does not say.
void LibGetOSVersion(LibString& version);
// Starts the system's shutdown tool, which ends or restarts the machine when and if it sees fit,
// and returns at once.
void LibShutdown(bool restart);
