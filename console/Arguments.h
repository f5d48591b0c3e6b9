// What is said on the command line, whatever the task: options, formats, percents and tests.
#pragma once

#include "results/TestCatalogue.h"

#include <charconv>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct Option {
    std::string name;
    std::string value; // empty where there is none
};

// Takes "--name=value", or "--name" and the argument behind it, unless that is an option itself.
// position, below the number of arguments, goes behind what was taken.
[[nodiscard]] Option NextOption(const std::vector<std::string>& arguments, size_t& position);

// A value, and what it is called.
template <class Value>
struct Named {
    const char* name;
    Value value;
};

enum class TextFormat { kTable, kCsv, kTsv, kJson };

inline constexpr Named<TextFormat> kFormats[] = { { "table", TextFormat::kTable },
    { "csv", TextFormat::kCsv }, { "tsv", TextFormat::kTsv }, { "json", TextFormat::kJson } };

// Finds the value that option's value names. Returns an empty text, or one line without its end
// that says what it may be.
template <class Value, size_t kCount>
[[nodiscard]] std::string TakeNamed(
    const Option& option, const Named<Value> (&all)[kCount], Value& value)
{
    std::string names;
    for (const auto& each : all) {
        if (option.value == each.name) {
            value = each.value;
            return "";
        }
        names += (names.empty() ? "" : ", ") + std::string(each.name);
    }
    return "<" + option.name + "> must be one of " + names + ", not <" + option.value + ">";
}

// Whether all of the text is a number, which is the same in every locale.
template <class Number>
[[nodiscard]] bool ParseNumber(std::string_view text, Number& number)
{
    const char* const end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && read == end;
}

// From 0 to 100, with or without the sign; nothing for any other text.
[[nodiscard]] std::optional<double> ParsePercent(std::string_view text);

// Calls take(name) for each name of a list with commas, until it returns a message, which is
// returned.
template <class Take>
[[nodiscard]] std::string ForEachName(std::string_view list, const Take& take)
{
    for (;;) {
        const size_t comma = list.find(',');
        if (std::string message = take(list.substr(0, comma)); !message.empty())
            return message;
        if (comma == list.npos)
            return "";
        list.remove_prefix(comma + 1);
    }
}

// The tests of that name, whatever the case, of that number or of the group with that key, as the
// catalogue has them; empty where there is none.
[[nodiscard]] std::vector<const TestType*> TestsCalled(std::string_view name);

// A paragraph for each test, under the name of its group: unit, direction, what it measures and
// what not.
[[nodiscard]] std::string TestTexts(const std::vector<const TestType*>& tests);
// The same of all tests.
[[nodiscard]] std::string TestTexts();
