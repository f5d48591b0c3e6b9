// What a processor is called.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kernel {
// From the text of /proc/cpuinfo: the model's name; where there is none the names of the kinds of
// core, "Cortex-A55 + Cortex-A78", or what else tells it: "POWER9", "machine 3906".
[[nodiscard]] std::optional<std::string> ProcessorModelIn(std::string_view info);
} // namespace kernel
