#include "foundation/LibDate.h"

#include "foundation/LibLocaleDate.h"
#include "foundation/PlainText.h"
#include "foundation/TypedNumbers.h"

#include <Message.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace {

constexpr char kDateField[] = "date";
// From that day on, only every fourth year that ends a century has a leap day.
constexpr double kGregorianReform = 15821015.0; // year, month, day as one number
constexpr int64 kFourYears = 1461; // days

struct CivilDate {
    int32 year;
    int32 month;
    int32 day;
};

// Years counted without a gap: 1 BC, written -1, is 0.
int64 YearWithoutGap(int32 year)
{
    return year < 0 ? int64 { year } + 1 : year;
}

int64 FloorDivide(int64 value, int64 divisor)
{
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}

// The number at the front of text, after blanks; a sign counts. False if there is none.
bool LeadingNumber(std::string_view text, int32& value)
{
    while (!text.empty() && LibIsSpace(text.front()))
        text.remove_prefix(1);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    const auto end = std::from_chars(text.data(), text.data() + text.size(), value);
    return end.ec == std::errc();
}

// The date that typed numbers mean, month 0 standing for the first of them. False if they are no
// date: too few or many, or of too many digits.
bool TypedDate(const TypedNumbers& numbers, int32 month, CivilDate& date)
{
    const int32 wanted = month != 0 ? 2 : 3;
    if (numbers.count != wanted && numbers.count != wanted - 1)
        return false;
    const bool hasYear = numbers.count == wanted;
    const bool yearFirst = hasYear && numbers.digits[0] == 4;
    size_t next = yearFirst ? 1 : 0;
    const size_t first = next;
    date.month = month != 0 ? month : numbers.values[next++];
    date.day = numbers.values[next];
    if (numbers.digits[first] > 2 || numbers.digits[next] > 2)
        return false;
    const size_t yearAt = yearFirst ? 0 : next + 1;
    date.year = hasYear ? LibTypedYear(numbers.values[yearAt], numbers.digits[yearAt])
                        : LibDate(true).GetYear();
    return date.year != 0;
}

bool ReadTypedDate(std::string_view text, CivilDate& date)
{
    TypedNumbers numbers;
    if (!LibReadTypedNumbers(text, "/-.,'", numbers))
        return false;
    if (!numbers.word.empty()) {
        const int32 month = LibDateConventions::English().Month(numbers.word);
        return month != 0 && TypedDate(numbers, month, date);
    }
    const bool joined = numbers.count == 1;
    if (joined && numbers.digits[0] != 6 && numbers.digits[0] != 8)
        return false;
    LibSplitDigits(numbers);
    // Digits without separators may also begin with the year: not guessed.
    return TypedDate(numbers, 0, date) && !(joined && (date.month < 1 || date.month > 12));
}

} // namespace

LibDate::LibDate(const bool& today, const bool& local)
{
    if (today)
        SetToday(local);
}

LibDate::LibDate(const uint32& ofMonth, const uint32& ofDay, const uint32& ofYear)
{
    SetDate(ofMonth, ofDay, ofYear);
}

LibDate::LibDate(const int32& dayNumber)
{
    SetDate(dayNumber);
}

void LibDate::PrintToStream() const
{
    fprintf(stderr, "LibDate: %d/%d/%d (%d)\n", month, day, year, julian);
}

// The day number of year, month and day, which are not 0, 0, 0. All truncations are toward zero.
int64 LibDate::DayNumber() const
{
    double y = static_cast<double>(YearWithoutGap(year));
    double m = month;
    // Counted from March on, so that the leap day is the last of its year and moves no other day.
    if (month < 3) {
        y -= 1;
        m += 12;
    }
    double gregorian = 0;
    if (y * 10000.0 + m * 100.0 + day >= kGregorianReform) {
        const double century = std::trunc(y / 100.0);
        gregorian = 2 - century + std::trunc(century / 4);
    }
    // 30.6001 and not 30.6: were 30.6 * 5 a little below 153, April would lose a day.
    return static_cast<int64>(
        std::trunc(365.25 * y) + std::trunc(30.6001 * (m + 1)) + day + gregorian + 1720994);
}

void LibDate::DateToJulian()
{
    if (year != 0)
        julian = LibToInt32(DayNumber());
}

void LibDate::JulianToDate()
{
    int64 z = int64 { julian } + 1;
    // Before the year -4713 the truncations below would go the wrong way: whole cycles of four
    // years are put on first and taken off at the end.
    const int64 cycles = z < 0 ? -z / kFourYears + 1 : 0;
    z += cycles * kFourYears;
    // 2299161 is 15 October 1582, from which on the leap days left out are counted in again.
    if (z > 2299160) {
        const auto century = static_cast<int64>((static_cast<double>(z) - 1867216.25) / 36524.25);
        z += 1 + century - century / 4;
    }
    // The other number skips the year 0.
    const int64 b = z > 1721423 ? z + 1524 : z + 1158;
    const auto c = static_cast<int64>((static_cast<double>(b) - 122.1) / 365.25);
    const auto yearDays = static_cast<int64>(365.25 * static_cast<double>(c));
    const auto e = static_cast<int64>(static_cast<double>(b - yearDays) / 30.6001);
    day = static_cast<int32>(b - yearDays - static_cast<int64>(30.6001 * static_cast<double>(e)));
    month = static_cast<int32>(e < 14 ? e - 1 : e - 13);
    year = static_cast<int32>((month > 2 ? c - 4716 : c - 4715) - 4 * cycles);
}

void LibDate::SetToday(const bool& local)
{
    const time_t now = time(nullptr);
    struct tm fields { };
    SetDate(local ? localtime_r(&now, &fields) : gmtime_r(&now, &fields));
}

void LibDate::SetDate(const uint32& newMonth, const uint32& newDay, const uint32& newYear)
{
    month = static_cast<int32>(newMonth);
    day = static_cast<int32>(newDay);
    year = static_cast<int32>(newYear);
    DateToJulian();
}

void LibDate::SetDate(const int32& newJulian)
{
    julian = newJulian;
    JulianToDate();
}

void LibDate::SetDate(const struct tm* date)
{
    if (!date)
        return;
    month = LibToInt32(int64 { date->tm_mon } + 1);
    day = date->tm_mday;
    year = LibToInt32(int64 { date->tm_year } + 1900);
    DateToJulian();
}

bool LibDate::SetDate(const char* text)
{
    const std::string_view typed = text ? text : "";
    CivilDate date {};
    // By columns, as in "12/31/1999": whatever stands between the numbers is passed over.
    if (typed.size() < 7 || !LeadingNumber(typed.substr(0, 2), date.month)
        || !LeadingNumber(typed.substr(3, 2), date.day)
        || !LeadingNumber(typed.substr(6), date.year) || date.year == 0)
        return LibRefuseDate(typed);
    month = date.month;
    day = date.day;
    year = date.year;
    return CorrectDate();
}

bool LibDate::SetUnformattedDate(const char* text)
{
    const std::string_view typed = text ? text : "";
    CivilDate date {};
    if (!ReadTypedDate(typed, date))
        return LibRefuseDate(typed);
    month = date.month;
    day = date.day;
    year = date.year;
    return CorrectDate();
}

void LibDate::GetDate(struct tm* date) const
{
    if (!date)
        return;
    date->tm_year = LibToInt32(int64 { year } - 1900);
    date->tm_mon = LibToInt32(int64 { month } - 1);
    date->tm_mday = day;
    date->tm_wday = DayOfWeek();
    date->tm_yday = LibToInt32(DaysIntoYear());
}

void LibDate::GetDate(struct tm& date) const
{
    GetDate(&date);
}

// Adds months and brings the month into 1 to 12; the day stays.
void LibDate::CarryMonths(int64 added)
{
    const int64 months = YearWithoutGap(year) * 12 + month - 1 + added;
    const int64 years = FloorDivide(months, 12);
    month = static_cast<int32>(months - years * 12 + 1);
    // Back to the count that has no year 0.
    year = LibToInt32(years > 0 ? years : years - 1);
}

bool LibDate::CorrectDate()
{
    if (year == 0)
        return false;
    CarryMonths(0);
    // Days out of range count on from that end of the month which they passed.
    const int32 nearest = std::clamp(day, 1, DaysInMonth());
    const int64 over = int64 { day } - nearest;
    day = nearest;
    const int64 number = DayNumber() + over;
    julian = LibToInt32(number);
    JulianToDate();
    return julian == number;
}

bool LibDate::IsValidDate() const
{
    return year != 0 && month >= 1 && month <= 12 && day >= 1 && day <= DaysInMonth();
}

void LibDate::SetYear(const int32& newYear)
{
    year = newYear;
    DateToJulian();
}

void LibDate::SetMonth(const uint32& newMonth)
{
    month = static_cast<int32>(newMonth);
    DateToJulian();
}

bool LibDate::SetMonth(const char* name)
{
    const int32 named = LibDateConventions::English().Month(name ? name : "");
    if (named == 0)
        return false;
    month = named;
    DateToJulian();
    return true;
}

void LibDate::SetDay(const uint32& newDay)
{
    day = static_cast<int32>(newDay);
    DateToJulian();
}

void LibDate::MoveDays(int64 days)
{
    julian = LibToInt32(julian + days);
    JulianToDate();
}

void LibDate::AddDays(const int& days)
{
    if (CorrectDate())
        MoveDays(days);
}

void LibDate::AddMonths(const int& months)
{
    if (year == 0)
        return;
    CarryMonths(months);
    CorrectDate();
}

void LibDate::AddYears(const int& years)
{
    if (year == 0)
        return;
    CarryMonths(int64 { years } * 12);
    CorrectDate();
}

// A day at a time: where the calendar changed the weekday rule does not count on by one.
void LibDate::StepTo(const LibWeekDay& weekDay, int days)
{
    constexpr int kMostSteps = 21;
    for (int i = 0; i < kMostSteps; i++) {
        MoveDays(days);
        if (DayOfWeek() == weekDay)
            return;
    }
}

void LibDate::SetToNext(const LibWeekDay& weekDay)
{
    StepTo(weekDay, 1);
}

void LibDate::SetToPrev(const LibWeekDay& weekDay)
{
    StepTo(weekDay, -1);
}

bool LibDate::IsLeapYear() const
{
    // The calendar of before the reform.
    if (year < 1582)
        return year % 4 == 0;
    return year % 400 == 0 || (year % 4 == 0 && year % 100 != 0);
}

int32 LibDate::DaysInYear() const
{
    return IsLeapYear() ? 366 : 365;
}

int32 LibDate::DaysInMonth() const
{
    switch (month) {
        case 2: return IsLeapYear() ? 29 : 28;
        case 4:
        case 6:
        case 9:
        case 11: return 30;
        default: return 31;
    }
}

// Not from the day numbers, which end where a date does not.
int64 LibDate::DaysIntoYear() const
{
    LibDate newYear(*this);
    newYear.month = 1;
    newYear.day = 1;
    return year != 0 ? DayNumber() - newYear.DayNumber() : 0;
}

int32 LibDate::GetDayOfYear() const
{
    return LibToInt32(DaysIntoYear() + 1);
}

int32 LibDate::DaysSince(const LibDate& other) const
{
    return LibToInt32(int64 { julian } - other.julian);
}

int32 LibDate::DayOfWeek(const uint32& ofDay) const
{
    // Zeller's congruence for the calendar of today. It is used for all years, so weekdays before
    // the reform are not those of their time.
    const int64 d = ofDay == 0 ? int64 { day } : int64 { ofDay };
    const int64 m = month < 3 ? int64 { month } + 10 : int64 { month } - 2;
    const int64 y = month < 3 ? int64 { year } - 1 : int64 { year };
    const int64 c = y / 100;
    const int64 r = y % 100;
    const int64 w = (d + (26 * m - 2) / 10 + r + r / 4 + c / 4 - 2 * c) % 7;
    return static_cast<int32>(w < 0 ? w + 7 : w);
}

int32 LibDate::DayOfWeek(const char* name)
{
    return LibDateConventions::English().WeekDay(name ? name : "");
}

bool LibDate::IsWeekEnd(const uint32& weekDay)
{
    return weekDay == LibSaturday || weekDay == LibSunday;
}

LibDate& LibDate::operator++()
{
    return *this += 1;
}

LibDate LibDate::operator++(int)
{
    const LibDate before(*this);
    ++*this;
    return before;
}

LibDate& LibDate::operator--()
{
    return *this -= 1;
}

LibDate LibDate::operator--(int)
{
    const LibDate before(*this);
    --*this;
    return before;
}

LibDate& LibDate::operator+=(const int32& days)
{
    MoveDays(days);
    return *this;
}

LibDate& LibDate::operator-=(const int32& days)
{
    // In 64 bits: the least int32 has no opposite.
    MoveDays(-int64 { days });
    return *this;
}

LibDate LibDate::operator+(const int32& days) const
{
    LibDate later(*this);
    return later += days;
}

LibDate LibDate::operator-(const int32& days) const
{
    LibDate earlier(*this);
    return earlier -= days;
}

status_t LibDate::Archive(BMessage& message) const
{
    return message.AddInt32(kDateField, julian);
}

status_t LibDate::Restore(const BMessage& message)
{
    int32 archived = 0;
    const status_t status = message.FindInt32(kDateField, &archived);
    if (status == B_OK)
        SetDate(archived);
    return status;
}
