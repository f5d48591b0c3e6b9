// Reading single facts below a root, where what is missing, damaged or endless is nothing.
#pragma once

#include "SupportDefs.h"

#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kernel {
// The first line of a text, fit for a record: valid UTF-8 without control characters, white space
// single and none at the ends, cut to 200 bytes at most. What is no character becomes "?".
[[nodiscard]] std::string PlainLine(std::string_view text);

// The text without blanks, tabs and line ends around it.
[[nodiscard]] std::string_view Trimmed(std::string_view text);

// The number that the text is but for white space around it; nothing if there is more or it does
// not fit.
template <typename Number>
[[nodiscard]] std::optional<Number> WholeNumber(std::string_view text)
{
    text = Trimmed(text);
    Number number;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return {};
    return number;
}

// The words between white space, empty ones left out.
[[nodiscard]] std::vector<std::string_view> Words(std::string_view text);

// The value in the first line "name : value" of such lines, without white space around it.
[[nodiscard]] std::optional<std::string_view> FieldIn(
    std::string_view text, std::string_view name, char separator = ':');

// The files below a root, "" for the running system. Every path begins with "/".
class SystemTree {
public:
    explicit SystemTree(std::string root) : fRoot(std::move(root)) { }

    const std::string& Root() const { return fRoot; }
    [[nodiscard]] bool Has(const std::string& path) const;
    // The whole file; nothing if it is no regular one, cannot be read or has more than 8 MB.
    [[nodiscard]] std::optional<std::string> Text(const std::string& path) const;
    // Its first line as PlainLine() has it; nothing if that is empty.
    [[nodiscard]] std::optional<std::string> Line(const std::string& path) const;
    [[nodiscard]] std::optional<uint64> Count(const std::string& path) const;
    // The names in a folder, sorted; nothing if it cannot be listed.
    [[nodiscard]] std::optional<std::vector<std::string>> Names(const std::string& path) const;

private:
    const std::string fRoot;
};

// The whole of a file, "" if it cannot be read; without the kill points of reading.
[[nodiscard]] std::string ReadText(const std::string& path);

// The number at the start of a text, in decimal; otherwise where there is none or it does not fit.
[[nodiscard]] long long NumberAt(const std::string& text, long long otherwise);
} // namespace kernel
