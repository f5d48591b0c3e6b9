#include "foundation/LibLocaleDate.h"

#include "foundation/LibParseDate.h"
#include "foundation/TypedNumbers.h"

#include <cstdio>
#include <string>

namespace {

using Order = LibDateConventions::Order;

std::string Padded(int32 number, int digits)
{
    char text[16];
    snprintf(text, sizeof(text), "%.*d", digits, number);
    return text;
}

} // namespace

LibLocaleDate::LibLocaleDate(const LibDate& date, const LibDateConventions& conventions)
    : LibDate(date), fConventions(conventions)
{
}

void LibLocaleDate::GetShort(LibString& text) const
{
    const std::string d = Padded(day, 2);
    const std::string m = Padded(month, 2);
    const std::string y = Padded(year, 4);
    const auto& between = fConventions.separators;
    std::string numbers;
    switch (fConventions.order) {
        case Order::kMonthDayYear: numbers = m + between[0] + d + between[1] + y; break;
        case Order::kDayMonthYear: numbers = d + between[0] + m + between[1] + y; break;
        case Order::kYearMonthDay: numbers = y + between[0] + m + between[1] + d; break;
    }
    // Some languages have a point after the last number, too.
    text = (numbers + between[2]).c_str();
}

void LibLocaleDate::GetLong(LibString& text) const
{
    // A date that is none may have any month.
    const bool named = month >= 1 && month <= 12;
    const std::string m = named ? fConventions.months[static_cast<size_t>(month - 1)] : "";
    const std::string& w = fConventions.weekDays[static_cast<size_t>(LibDate::DayOfWeek())];
    const std::string d = std::to_string(day);
    const std::string y = Padded(year, 4); // "50" would be read as 2050
    std::string names;
    switch (fConventions.order) {
        case Order::kMonthDayYear: names = w + ", " + m + " " + d + ", " + y; break;
        case Order::kDayMonthYear: names = w + ", " + d + " " + m + " " + y; break;
        case Order::kYearMonthDay: names = w + ", " + y + " " + m + " " + d; break;
    }
    text = names.c_str();
}

bool LibLocaleDate::SetTyped(const char* text)
{
    return SetTyped(text, LibDate(true));
}

bool LibLocaleDate::SetTyped(const char* text, const LibDate& today)
{
    const char* typed = text ? text : "";
    LibParsedDate parsed;
    // A time, or a distance in hours, would be lost without a word: it is refused instead.
    if (!LibParseDate(typed, fConventions, today, LibTime(), parsed) || !parsed.hasDate
        || parsed.hasTime || parsed.seconds != 0)
        return LibRefuseDate(typed);
    SetDate(parsed.date.GetJulian());
    return true;
}
