#include "console/Arguments.h"

#include "foundation/PlainText.h"
#include "foundation/Utf8.h"

#include <algorithm>

namespace {

bool IsCalled(const TestType& test, std::string_view name)
{
    if (name == std::to_string(test.id) || LibFoldCase(test.name) == LibFoldCase(name))
        return true;
    return test.group != kOlderVersions && name == kTestGroups[test.group].key;
}

// The text in lines of at most 80 letters, each behind four blanks.
std::string Wrapped(std::string_view text)
{
    constexpr size_t kWidth = 76;
    std::string lines;
    while (!text.empty()) {
        const size_t end = text.size() <= kWidth ? text.size() : text.rfind(' ', kWidth);
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
    std::string text = std::string(test.name) + " (" + std::to_string(test.id) + "): " + test.units
        + ", " + direction + " is better; " + group + "\n" + Wrapped(test.measures)
        + Wrapped(test.measuresNot);
    if (const double apart = LeastDifference(test); apart > 0)
        text += Wrapped("Differs by up to " + LibFixedText(100 * apart, 0)
            + " percent between sittings of one machine: less is no real difference.");
    return text;
}

} // namespace

Option NextOption(const std::vector<std::string>& arguments, size_t& position)
{
    const std::string& argument = arguments[position++];
    const size_t equals = argument.find('=');
    if (equals != argument.npos)
        return { argument.substr(0, equals), argument.substr(equals + 1) };
    // A single "-" is a standard file.
    if (position == arguments.size() || arguments[position].starts_with("--"))
        return { argument, "" };
    return { argument, arguments[position++] };
}

std::optional<double> ParsePercent(std::string_view text)
{
    double percent = -1;
    if (text.ends_with('%'))
        text.remove_suffix(1);
    // Asked this way round, as "nan" is a number to from_chars() and fails every comparison.
    if (!ParseNumber(text, percent) || !(percent >= 0 && percent <= 100))
        return std::nullopt;
    return percent;
}

std::vector<const TestType*> TestsCalled(std::string_view name)
{
    std::vector<const TestType*> tests;
    for (const TestType& test : kTestTypes) {
        if (IsCalled(test, name))
            tests.push_back(&test);
    }
    return tests;
}

std::string TestTexts(const std::vector<const TestType*>& tests)
{
    std::string text;
    for (const TestType* test : tests)
        text += Paragraph(*test);
    return text;
}

std::string TestTexts()
{
    std::string text;
    for (const TestType& test : kTestTypes)
        text += Paragraph(test);
    return text;
}
