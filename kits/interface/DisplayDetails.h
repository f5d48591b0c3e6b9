// Beside the platform's calls: what a record of a run says of the display that it drew on.
#pragma once

#include "RunWarnings.h"

#include <optional>

// Asks the X server that DISPLAY names, on a connection of its own. Empty without one.
[[nodiscard]] std::optional<DisplayDetails> ReadDisplayDetails();
