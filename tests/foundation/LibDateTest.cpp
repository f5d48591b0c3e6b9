#include "foundation/LibDate.h"

#include "tests/foundation/ZoneGuard.h"
#include "tests/support/Rows.h"
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

TEST(LibDate, EveryDayOfSevenThousandYearsComesAfterTheOneBefore)
{
    Walker walker { -4713, 1, 1 };
    LibDate date = DateOf(walker.year, walker.month, walker.day);
    for (; walker.year <= 3000; walker.Next(), ++date) {
        const LibDate again = DateOf(walker.year, walker.month, walker.day);
        ASSERT_TRUE(date.GetYear() == walker.year && date.GetMonth() == walker.month
            && date.GetDay() == walker.day && date.GetDayOfYear() == walker.dayOfYear
            && again == date && date.IsValidDate() && date.DaysInMonth() == walker.LastDay()
            && date.DaysInYear() == 365 + walker.IsLeap()
            && (walker.year < 1583 || date.DayOfWeek() == (date.GetJulian() + 2) % 7)
            && !DateOf(walker.year, walker.month, walker.LastDay() + 1).IsValidDate())
            << TextOf(date) << " instead of " << TextOf(again);
    }
    EXPECT_EQ(TextOf(date), "3001-1-1");
    // Meeus, "Astronomical Algorithms", chapter 7, less the half day from noon to noon.
    EXPECT_EQ(DateOf(2000, 1, 1).GetJulian(), 2451544);
    for (const int32 early : { -1, -366, -1461, -1462, -146100 })
        EXPECT_EQ(
            DateOf(LibDate(early).GetYear() + 8, 1, 1) - DateOf(LibDate(early).GetYear(), 1, 1),
            2922);
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

TEST(LibDate, ChangesKeepDateAndDayNumberTogether)
{
    const LibDate day = DateOf(2001, 10, 24); // a Wednesday
    const LibDate none;
    const struct tm fields {
        0, 0, 0, 29, 1, 104, 0, 0, 0, 0, nullptr
    };
    const std::tuple<LibDate, std::function<void(LibDate&)>, std::string> rows[] = {
        { DateOf(2001, 1, 31), [](LibDate& d) { d.AddMonths(1); }, "2001-3-3" },
        { DateOf(2001, 3, 3), [](LibDate& d) { d.AddMonths(-15); }, "1999-12-3" },
        { DateOf(2000, 2, 29), [](LibDate& d) { d.AddYears(1); }, "2001-3-1" },
        { DateOf(2001, 3, 1), [](LibDate& d) { d.AddYears(-2001); }, "-1-3-1" }, // no year 0
        { DateOf(2001, 2, 30), [](LibDate& d) { d.AddDays(1); }, "2001-3-3" },
        { none, [](LibDate& d) { d.AddDays(5), d.AddMonths(5), d.AddYears(5); }, "0-0-0" },
        { day, [](LibDate& d) { d = d++; }, "2001-10-24" },
        { day, [](LibDate& d) { d++; }, "2001-10-25" },
        { day, [](LibDate& d) { d = --d; }, "2001-10-23" },
        { day, [](LibDate& d) { d = d--; }, "2001-10-24" },
        { day, [](LibDate& d) { d--; }, "2001-10-23" },
        { day, [](LibDate& d) { d = d - 24 + 8; }, "2001-10-8" },
        { day, [](LibDate& d) { (d += 8) -= 25; }, "2001-10-7" },
        { day, [](LibDate& d) { d.SetToNext(LibWednesday); }, "2001-10-31" },
        { day, [](LibDate& d) { d.SetToPrev(LibSunday); }, "2001-10-21" },
        { DateOf(1582, 10, 4), [](LibDate& d) { d.SetToNext(LibMonday); }, "1582-10-18" },
        { day, [](LibDate& d) { d.SetYear(2004); }, "2004-10-24" },
        { day, [](LibDate& d) { EXPECT_TRUE(d.SetMonth("DECEMBER")); }, "2001-12-24" },
        { day, [](LibDate& d) { EXPECT_FALSE(d.SetMonth("Dezember")); }, "2001-10-24" },
        { day, [](LibDate& d) { d.SetDay(31), d.SetMonth(uint32 { 2 }); }, "2001-2-31" },
        { day, [&](LibDate& d) { d.SetDate(&fields); }, "2004-2-29" },
        { day, [](LibDate& d) { d.SetDate(static_cast<struct tm*>(nullptr)); }, "2001-10-24" },
    };
    for (const auto& [before, change, after] : rows) {
        LibDate date = before;
        change(date);
        EXPECT_EQ(TextOf(date), after);
        EXPECT_EQ(date, DateOf(date.GetYear(), date.GetMonth(), date.GetDay())) << after;
    }
    testing::internal::CaptureStderr();
    day.PrintToStream();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "LibDate: 10/24/2001 (2452206)\n");
    EXPECT_EQ(day.DayOfWeek(1), LibMonday);
    EXPECT_EQ(LibDate::DayOfWeek("saturday") * 10 + LibDate::DayOfWeek("sa"), 59);
    std::string weekEnds;
    for (uint32 weekDay = 0; weekDay < 8; weekDay++)
        weekEnds += LibDate::IsWeekEnd(weekDay) ? "y" : "n";
    EXPECT_EQ(weekEnds, "ynnnnnyn");
}

TEST(LibDate, TodayIsThatOfTheZoneOrOfUtc)
{
    for (const auto& [zone, hours] : { std::pair("AST-23", 23), { "BST23", -23 } }) {
        const ZoneGuard guard(zone);
        const auto number = [](int ahead) {
            return (time(nullptr) + ahead * 3600) / 86400 + 2440587;
        };
        const auto here = number(hours), utc = number(0);
        const LibDate today(true), there(true, false);
        EXPECT_TRUE(today.GetJulian() == here || today.GetJulian() == number(hours)) << zone;
        EXPECT_TRUE(there.GetJulian() == utc || there.GetJulian() == number(0)) << zone;
    }
}

TEST(LibDate, ReadsFixedAndFreeForms)
{
    const std::string thisYear = std::to_string(LibDate(true).GetYear());
    for (const Row& row : RowsOf("foundation/data/written-dates.txt", 3)) {
        SCOPED_TRACE(row[1]);
        LibDate date = DateOf(1111, 11, 11);
        const char* text = row[1] == "null" ? nullptr : row[1].c_str();
        const bool isRead = row[0] == "free" ? date.SetUnformattedDate(text) : date.SetDate(text);
        EXPECT_EQ(isRead, row[2] != "-");
        const size_t year = row[2].starts_with("this year") ? 9 : 0;
        const std::string read = (year > 0 ? thisYear : "") + row[2].substr(year);
        EXPECT_EQ(TextOf(date), isRead ? read : "1111-11-11");
    }
    testing::internal::CaptureStderr();
    const std::string x(79, 'x'); // and a letter of two bytes, the first of which is the 80th
    EXPECT_FALSE(LibDate().SetUnformattedDate((x + "\xc3\xa4").c_str()));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Unable to read the date <" + x + ">\n");
}
