#pragma once

#include <string>

namespace kernel {
// The whole of a file, "" if it cannot be read; without the kill points of reading.
[[nodiscard]] std::string ReadText(const std::string& path);

// The number at the start of a text, in decimal; otherwise where there is none or it does not fit.
[[nodiscard]] long long NumberAt(const std::string& text, long long otherwise);
} // namespace kernel
