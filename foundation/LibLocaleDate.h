// Dates as a language writes them.
#pragma once

#include "foundation/LibDate.h"
#include "foundation/LibString.h"

#include <SupportDefs.h>

#include <array>
#include <string>
#include <string_view>

// How a language writes dates: the order of their parts, what stands between them, and the names of
// months and weekdays. All texts are UTF-8.
struct LibDateConventions {
    enum class Order { kMonthDayYear, kDayMonthYear, kYearMonthDay };

    Order order = Order::kMonthDayYear;
    // After the first, second and third number of a short date; the last is mostly "".
    std::array<std::string, 3> separators { "/", "/", "" };
    std::array<std::string, 12> months; // from January
    std::array<std::string, 12> shortMonths;
    std::array<std::string, 7> weekDays; // from Sunday
    std::array<std::string, 7> shortWeekDays;

    // The program's own: month, day, year with "/" and the English names.
    static const LibDateConventions& English();
    // Those of a locale of the system ("de_DE.UTF-8"; "" is the one that the user's environment
    // names). The English ones for a locale that is not installed, with a line on standard error.
    // The process's own locale stays as it is.
    static LibDateConventions OfLocale(const char* name);

    // The number from 0 of the name that a text begins with, and its length in the text.
    struct Match {
        int32 index = -1; // -1: with none
        size_t length = 0;
    };
    // The longest name or short name of a month, or else the longest English one, that folded, a
    // text as LibFoldCase() gives it, begins with as a whole word.
    [[nodiscard]] Match MatchMonth(std::string_view folded) const;
    // The same for weekdays.
    [[nodiscard]] Match MatchWeekDay(std::string_view folded) const;
    // The number of a month, 1 to 12, by its name, short name or English name, in whatever case;
    // 0 for another word.
    [[nodiscard]] int32 Month(std::string_view word) const;
    // The same for a weekday, 0, Sunday, to 6; -1 for another word.
    [[nodiscard]] int32 WeekDay(std::string_view word) const;
};

// Sets order and separators from a format of strftime such as "%d.%m.%Y". False, and nothing
// changes, if it has no day, month and year in one of the three orders.
bool LibReadDateFormat(std::string_view format, LibDateConventions& conventions);

// A date shown and typed as the user's language has it.
class LibLocaleDate : public LibDate {
public:
    // By the conventions of the user's environment unless others are given.
    explicit LibLocaleDate(const LibDate& date = LibDate(),
        const LibDateConventions& conventions = LibDateConventions::OfLocale(""));

    const LibDateConventions& Conventions() const { return fConventions; }

    // The date in numbers, the year in full: "03/12/2001", "12.03.2001".
    void GetShort(LibString& text) const;
    // With names: "Monday, March 12, 2001", "Montag, 12 März 2001". A month out of range has none.
    void GetLong(LibString& text) const;
    // Reads what people type, as LibParseDate() does, both forms above among it, from today on.
    // False, a line on standard error, and nothing changes, if it cannot be read or names a time
    // of day.
    bool SetTyped(const char* text);
    // The same on a given day, so that it depends on nothing else.
    bool SetTyped(const char* text, const LibDate& today);

private:
    LibDateConventions fConventions;
};
