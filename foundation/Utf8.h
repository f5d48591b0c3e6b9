// Characters beyond ASCII, which LibString leaves as the bytes that they are.
#pragma once

#include <string>
#include <string_view>

// The beginning of text that has at most so many bytes and ends with a whole character. What is no
// UTF-8 is cut where it must be.
[[nodiscard]] std::string_view LibCutUtf8(std::string_view text, size_t bytes);

// The text with every letter in lower case, so that texts can be compared whatever their case.
// Bytes that are no UTF-8 stay as they are.
[[nodiscard]] std::string LibFoldCase(std::string_view text);

// A text from elsewhere as it may be shown on a terminal or in a log: control characters, those
// that change the direction of the text, line separators and what is no UTF-8 appear as their
// bytes ("\x1b"), all else as it is. At most the first bytes of a text; "" for a null pointer.
[[nodiscard]] std::string LibPrintable(const char* text, size_t most = std::string_view::npos);
