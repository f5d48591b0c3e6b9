// A calendar date and its day number, kept together: what sets one computes the other.
//
// Day numbers count days without a gap. They are one less than the astronomers' Julian day number
// of the date's noon, so 2000-01-01 is 2451544. Up to 1582-10-04 the calendar is the Julian one,
// from the following day, 1582-10-15, the Gregorian. There is no year 0: year -1 comes before
// year 1. The rule "divisible by four" holds for negative years as they are written, so -4, -8 are
// leap years, while for astronomers 1, 5, ... BC are: day numbers before year 1 are therefore equal
// to theirs, or one greater.
//
// A setter takes a day or month out of range as it is, IsValidDate() then tells so, and
// CorrectDate() carries it over. Arithmetic that leaves the range of day numbers (5,800,000 years)
// ends at its last day.
#pragma once

#include <SupportDefs.h>

#include <compare>
#include <ctime>

class BMessage;

enum LibWeekDay {
    LibSunday,
    LibMonday,
    LibTuesday,
    LibWednesday,
    LibThursday,
    LibFriday,
    LibSaturday,
};

class LibDate {
public:
    // Today's date, see SetToday(); else a date of zeroes, which is not valid.
    explicit LibDate(const bool& today = false, const bool& local = true);
    LibDate(const uint32& month, const uint32& day, const uint32& year);
    explicit LibDate(const int32& julian);
    LibDate(const LibDate& other) = default;
    LibDate& operator=(const LibDate& other) = default;
    virtual ~LibDate() = default;
    // "LibDate: month/day/year (day number)" on standard error.
    virtual void PrintToStream() const;

    // Today in the user's time zone, or in UTC.
    void SetToday(const bool& local = true);
    // A negative year is given as the uint32 of the same bits. In year 0 there is no day number:
    // the one before stays.
    void SetDate(const uint32& month, const uint32& day, const uint32& year);
    void SetDate(const int32& julian);
    void SetDate(const struct tm* date); // null: nothing changes
    // Reads month, day and year at characters 0, 3 and 6 ("12/31/1999", any separators), then
    // CorrectDate(). False, and nothing changes, if one of them is no number or the year is 0.
    bool SetDate(const char* text);
    // Reads what people type, in the order month, day, year: "12/31/1999", "12 31 99", "12311999",
    // "123199", "3/7" (this year), with a leading year of four digits "1999-12-31", with the name
    // of a month "12 mar 2001" or "March 12"; then CorrectDate(). Years of two digits lie between
    // 1969 and 2068. False, a line on standard error, and nothing changes, for anything else.
    bool SetUnformattedDate(const char* text);
    // Sets year, month, day, weekday and day of the year of date, and nothing else in it.
    void GetDate(struct tm* date) const;
    void GetDate(struct tm& date) const;

    // Carries months into the year and days into the month, and moves the ten days that 1582 left
    // out to those which came instead. False if the result is no date: year 0, or out of range.
    bool CorrectDate();
    // Whether month and day exist in their year; 1582-10-05 to -14 count as existing.
    bool IsValidDate() const;

    int32 GetYear() const { return year; }
    int32 GetMonth() const { return month; }
    int32 GetDay() const { return day; }
    int32 GetJulian() const { return julian; }
    void SetYear(const int32& newYear);
    void SetMonth(const uint32& newMonth);
    // By its English name or the first three letters of it. False, and nothing changes, for
    // another word.
    bool SetMonth(const char* name);
    void SetDay(const uint32& newDay);

    // Each ends with CorrectDate(): a month after January 31 is March 2 or 3. Nothing happens in
    // year 0.
    void AddDays(const int& days);
    void AddMonths(const int& months);
    void AddYears(const int& years);
    // Moves to the next or previous date, at least one day away, of that weekday.
    void SetToNext(const LibWeekDay& weekDay);
    void SetToPrev(const LibWeekDay& weekDay);

    bool IsLeapYear() const;
    int32 DaysInYear() const; // 365 or 366
    int32 DaysInMonth() const; // 31 for a month out of range
    int32 GetDayOfYear() const; // from 1
    int32 DaysSince(const LibDate& other) const; // negative if other is later
    // 0, Sunday, to 6 of the given day of this month, 0 meaning the stored day. The rule is the
    // Gregorian one, also for years before it came.
    int32 DayOfWeek(const uint32& ofDay = 0) const;
    // The number of a weekday by its English name or the first three letters; -1 for another word.
    static int32 DayOfWeek(const char* name);
    static bool IsWeekEnd(const uint32& weekDay); // Saturday and Sunday

    LibDate& operator++();
    LibDate operator++(int);
    LibDate& operator--();
    LibDate operator--(int);
    LibDate& operator+=(const int32& days);
    LibDate& operator-=(const int32& days);
    LibDate operator+(const int32& days) const;
    LibDate operator-(const int32& days) const;
    int32 operator-(const LibDate& other) const { return DaysSince(other); }
    bool operator==(const LibDate& other) const { return julian == other.julian; }
    auto operator<=>(const LibDate& other) const { return julian <=> other.julian; }

    // The day number as the int32 "date" of message; the status of BMessage.
    status_t Archive(BMessage& message) const;
    status_t Restore(const BMessage& message); // after an error nothing has changed

protected:
    int32 julian = 0;
    int32 day = 0;
    int32 month = 0;
    int32 year = 0;

private:
    int64 DayNumber() const;
    int64 DaysIntoYear() const;
    void DateToJulian();
    void JulianToDate();
    void CarryMonths(int64 added);
    void MoveDays(int64 days);
    void StepTo(const LibWeekDay& weekDay, int days);
};
