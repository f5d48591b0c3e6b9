#include "foundation/LibDate.h"

#include "tests/support/Test.h"

namespace {

LibDate DateOf(int32 year, int32 month, int32 day)
{
    return LibDate(static_cast<uint32>(month), static_cast<uint32>(day), static_cast<uint32>(year));
}

std::string TextOf(const LibDate& date)
{
    return std::to_string(date.GetYear()) + "-" + std::to_string(date.GetMonth()) + "-"
        + std::to_string(date.GetDay());
}

// The calendar as a table, a day at a time: what DayNumber and its inverse compute.
struct Walker {
    int32 year;
    int32 month;
    int32 day;
    int32 dayOfYear = 1;

    bool IsLeap() const
    {
        return year % 4 == 0 && (year < 1582 || year % 100 != 0 || year % 400 == 0);
    }
    int32 LastDay() const
    {
        const int32 days[] = { 31, IsLeap() ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31 };
        return days[month - 1];
    }
    void Next()
    {
        day++;
        dayOfYear++;
        if (year == 1582 && month == 10 && day == 5)
            day = 15;
        if (day > LastDay()) {
            day = 1;
            month++;
        }
        if (month > 12) {
            month = dayOfYear = 1;
            year = year == -1 ? 1 : year + 1;
        }
    }
};

} // namespace

TEST(LibDate, DayNumbersAreThoseOfAstronomers)
{
    // Meeus, "Astronomical Algorithms", chapter 7, less the half day from noon to noon and counted
    // at 0h. Before year 1 the leap years differ: ahead of the astronomers by a day, or not.
    const std::tuple<int32, int32, int32, int32, int32> rows[] = { { 2000, 1, 1, 2451544, 0 },
        { 1600, 12, 31, 2305812, 0 }, { 837, 4, 10, 2026871, 0 }, { -124, 12, 31, 1676496, 1 },
        { -1001, 7, 12, 1356000, 0 }, { -4713, 1, 1, -1, 1 } };
    for (const auto& [year, month, day, number, ahead] : rows)
        EXPECT_EQ(DateOf(year, month, day).GetJulian(), number + ahead) << year;
}

TEST(LibDate, EveryDayOfSevenThousandYearsComesAfterTheOneBefore)
{
    Walker walker { -4713, 1, 1 };
    LibDate date = DateOf(walker.year, walker.month, walker.day);
    for (; walker.year <= 3000; walker.Next(), ++date) {
        const LibDate again = DateOf(walker.year, walker.month, walker.day);
        ASSERT_TRUE(date.GetYear() == walker.year && date.GetMonth() == walker.month
            && date.GetDay() == walker.day && date.GetDayOfYear() == walker.dayOfYear
            && again == date && date.IsValidDate()
            && !DateOf(walker.year, walker.month, walker.LastDay() + 1).IsValidDate())
            << TextOf(date) << " instead of " << TextOf(again);
    }
    EXPECT_EQ(TextOf(date), "3001-1-1");
}

TEST(LibDate, CorrectDateCarriesDaysAndMonths)
{
    const std::tuple<int32, int32, int32, std::string> rows[] = { { 2001, 2, 30, "2001-3-2" },
        { 2000, 13, 1, "2001-1-1" }, { 2000, 0, 31, "1999-12-31" }, { 2001, 3, 0, "2001-2-28" },
        { 2001, 1, -30, "2000-12-1" }, { 1, 0, 1, "-1-12-1" }, { -1, 13, 1, "1-1-1" },
        { 2001, -23, 400, "2000-2-4" }, { 1582, 10, 5, "1582-10-15" },
        { 1582, 10, 14, "1582-10-24" }, { 1582, 10, 32, "1582-11-1" }, { 1900, 2, 29, "1900-3-1" },
        { 2001, INT32_MAX, 1, "" } };
    for (const auto& [year, month, day, corrected] : rows) { // "": it is no date at all
        LibDate date = DateOf(year, month, day);
        SCOPED_TRACE(TextOf(date));
        EXPECT_EQ(date.CorrectDate() ? TextOf(date) : "", corrected);
        EXPECT_EQ(date, DateOf(date.GetYear(), date.GetMonth(), date.GetDay()));
    }
}

TEST(LibDate, ArithmeticNormalises)
{
    LibDate date = DateOf(2001, 1, 31);
    date.AddMonths(1);
    date.AddMonths(-15);
    EXPECT_EQ(TextOf(date), "1999-12-3");
    date = DateOf(2000, 2, 29);
    date.AddYears(1);
    EXPECT_EQ(TextOf(date), "2001-3-1");
    date.AddYears(-2001); // there is no year 0
    EXPECT_EQ(TextOf(date), "-1-3-1");
    date = DateOf(2001, 2, 30);
    date.AddDays(1);
    EXPECT_EQ(TextOf(date), "2001-3-3");
    EXPECT_EQ(date - DateOf(2000, 2, 28), 369);
    LibDate none;
    none.AddMonths(5);
    EXPECT_EQ(TextOf(none), "0-0-0");
}

TEST(LibDate, WeekdaysOfTheGregorianCalendar)
{
    LibDate date = DateOf(2001, 10, 24);
    EXPECT_EQ(date.DayOfWeek(), LibWednesday);
    EXPECT_EQ(date.DayOfWeek(1), LibMonday);
    date.SetToNext(LibWednesday);
    EXPECT_EQ(TextOf(date), "2001-10-31");
    date.SetToPrev(LibSunday);
    EXPECT_EQ(TextOf(date), "2001-10-28");
    EXPECT_EQ(LibDate::DayOfWeek("saturday"), 6);
    EXPECT_EQ(LibDate::DayOfWeek("sa"), -1);
    // Where the rule of one calendar meets the days of the other a weekday is still found.
    date = DateOf(1582, 10, 4);
    date.SetToNext(LibMonday);
    EXPECT_EQ(date.DayOfWeek(), LibMonday);
}

TEST(LibDate, SettersKeepDateAndDayNumberTogether)
{
    LibDate date = DateOf(2001, 3, 12);
    date.SetYear(2004);
    EXPECT_EQ(date.GetDayOfYear(), 72);
    EXPECT_TRUE(date.SetMonth("DECEMBER"));
    EXPECT_FALSE(date.SetMonth("Dezember"));
    date.SetDay(31);
    EXPECT_EQ(date, DateOf(2004, 12, 31));
    date.SetMonth(uint32 { 2 });
    EXPECT_FALSE(date.IsValidDate());
    EXPECT_EQ(date, DateOf(2004, 3, 2)); // 29 days and two more
}

TEST(LibDate, ReadsFixedAndFreeForms)
{
    // Whether the form is fixed; "" for a refused text.
    const std::tuple<bool, const char*, std::string> rows[] = { { true, "12/31/1999",
                                                                    "1999-12-31" },
        { true, " 1. 2.-44", "-44-1-2" }, { true, "12/31/0", "" }, { true, "12/xx/1999", "" },
        { false, "1 2 69", "1969-1-2" }, { false, "1-2-68", "2068-1-2" },
        { false, "12311999", "1999-12-31" }, { false, "123199", "1999-12-31" },
        { false, "003199", "" }, { false, "2001-03-12", "2001-3-12" },
        { false, "2/30/2001", "2001-3-2" }, { false, "12 mar 2001", "2001-3-12" },
        { false, "March 12, '01", "2001-3-12" }, { false, "mar", "" }, { false, "12 foo 2001", "" },
        { false, "1/2/3/4", "" }, { false, "1/2/345", "" }, { false, nullptr, "" } };
    for (const auto& [isFixed, text, expected] : rows) {
        SCOPED_TRACE(text ? text : "null");
        LibDate date = DateOf(1111, 11, 11);
        const bool isRead = isFixed ? date.SetDate(text) : date.SetUnformattedDate(text);
        EXPECT_EQ(isRead ? TextOf(date) : "", expected);
        EXPECT_TRUE(isRead || date == DateOf(1111, 11, 11));
    }
    testing::internal::CaptureStderr();
    const std::string x(79, 'x'); // and a letter of two bytes, the first of which is the 80th
    EXPECT_FALSE(LibDate().SetUnformattedDate((x + "\xc3\xa4").c_str()));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Unable to read the date <" + x + ">\n");
}
