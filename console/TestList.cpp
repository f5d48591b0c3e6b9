#include "console/TestList.h"

#include "results/TestCatalogue.h"

#include <algorithm>

namespace {

// The text in lines of at most 80 letters, each behind four blanks.
std::string Wrapped(std::string_view text)
{
    constexpr size_t kWidth = 76;
    std::string lines;
    while (!text.empty()) {
        size_t end = text.size() <= kWidth ? text.size() : text.rfind(' ', kWidth);
        end = end == text.npos ? text.size() : end;
        lines += "    " + std::string(text.substr(0, end)) + "\n";
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

std::string Paragraph(const TestType& test)
{
    const std::string direction = test.better == Better::kMore ? "more" : "less";
    const std::string group = test.group == kOlderVersions
        ? "of older versions only"
        : "group " + std::string(kTestGroups[test.group].key);
    return std::string(test.name) + " (" + std::to_string(test.id) + "): " + test.units + ", "
        + direction + " is better; " + group + "\n" + Wrapped(test.measures)
        + Wrapped(test.measuresNot);
}

} // namespace

std::string TestList()
{
    std::string text;
    for (const TestType& test : kTestTypes)
        text += Paragraph(test);
    return text;
}

std::optional<std::string> ExplainTest(const std::string& name)
{
    const auto* found = std::find_if(std::begin(kTestTypes), std::end(kTestTypes),
        [&](const TestType& test) { return name == test.name || name == std::to_string(test.id); });
    if (found == std::end(kTestTypes))
        return std::nullopt;
    return Paragraph(*found);
}
