// Columns of text for people.
#pragma once

#include "foundation/LibString.h"

#include <string>

// The text with blanks behind or before it up to width; a longer one as it is.
[[nodiscard]] std::string PadRight(std::string text, size_t width);
[[nodiscard]] std::string PadLeft(const std::string& text, size_t width);

// The text of a LibString, "" where it has no buffer.
[[nodiscard]] std::string TextOf(const LibString& text);
