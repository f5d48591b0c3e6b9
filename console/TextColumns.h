// Columns of text for people.
#pragma once

#include "results/Metric.h"

#include <string>

// The text with blanks behind or before it up to width; a longer one as it is.
[[nodiscard]] std::string PadRight(std::string text, size_t width);
[[nodiscard]] std::string PadLeft(const std::string& text, size_t width);

// The rate of a metric's slot; "-" where its pass left the test out.
[[nodiscard]] std::string RateText(const Metric& metric, int slot);

// The text of a LibString, "" where it has no buffer.
[[nodiscard]] std::string TextOf(const LibString& text);
