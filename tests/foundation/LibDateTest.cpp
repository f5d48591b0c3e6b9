#include "foundation/LibDate.h"

#include "tests/foundation/ZoneGuard.h"
#include "tests/support/Calls.h"
#include "tests/support/Printed.h"
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

} // namespace

TEST(LibDate, EveryDayOfSevenThousandYearsComesAfterTheOneBefore)
{
    LibDate date = DateOf(-4713, 1, 1);
    for (int32 year = -4713; year <= 3000; year += year == -1 ? 2 : 1) {
        const bool isLeap = year % 4 == 0 && (year < 1582 || year % 100 != 0 || year % 400 == 0);
        const int32 days[] = { 31, isLeap ? 29 : 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31 };
        int32 dayOfYear = 1;
        for (int32 month = 1; month <= 12; month++) {
            const int32 last = days[month - 1];
            for (int32 day = 1; day <= last; day++, dayOfYear++, ++date) {
                if (year == 1582 && month == 10 && day == 5)
                    day = 15;
                const LibDate again = DateOf(year, month, day);
                ASSERT_TRUE(date.GetYear() == year && date.GetMonth() == month
                    && date.GetDay() == day && date.GetDayOfYear() == dayOfYear && again == date
                    && date.IsValidDate() && date.DaysInMonth() == last
                    && date.DaysInYear() == 365 + isLeap
                    && (year < 1583 || date.DayOfWeek() == (date.GetJulian() + 2) % 7)
                    && !DateOf(year, month, last + 1).IsValidDate())
                    << TextOf(date) << " instead of " << TextOf(again);
            }
        }
    }
    EXPECT_EQ(TextOf(date), "3001-1-1");
    // Meeus, "Astronomical Algorithms", chapter 7, less the half day from noon to noon.
    EXPECT_EQ(DateOf(2000, 1, 1).GetJulian(), 2451544);
    for (const int32 early : { -1, -366, -1461, -1462, -146100 })
        EXPECT_EQ(
            DateOf(LibDate(early).GetYear() + 8, 1, 1) - DateOf(LibDate(early).GetYear(), 1, 1),
            2922);
}

TEST(LibDate, ChangesAndTextsKeepDateAndDayNumberTogether)
{
    const Calls<LibDate> calls = { { "AddDays", Function(&LibDate::AddDays) },
        { "AddMonths", Function(&LibDate::AddMonths) },
        { "AddYears", Function(&LibDate::AddYears) }, { "SetYear", Function(&LibDate::SetYear) },
        { "SetDay", Function(&LibDate::SetDay) },
        { "SetMonth", Function<const uint32&>(&LibDate::SetMonth) },
        { "SetMonthNamed", Function<const char*>(&LibDate::SetMonth) },
        { "SetToNext", Function(&LibDate::SetToNext) },
        { "SetToPrev", Function(&LibDate::SetToPrev) }, { "+=", Function(&LibDate::operator+=) },
        { "-=", Function(&LibDate::operator-=) }, { "Correct", Function(&LibDate::CorrectDate) },
        { "Columns", Function<const char*>(&LibDate::SetDate) },
        { "Free", Function(&LibDate::SetUnformattedDate) } };
    const std::string thisYear = std::to_string(LibDate(true).GetYear());
    for (const Row& row : RowsOf("foundation/data/date-changes.txt", 4)) {
        SCOPED_TRACE(testing::PrintToString(row));
        int32 y = 0, m = 0, d = 0;
        EXPECT_EQ(sscanf(row[0].c_str(), "%d-%d-%d", &y, &m, &d), 3);
        LibDate date = DateOf(y, m, d);
        const std::string told = calls.at(row[1])(date, row);
        EXPECT_EQ((told.empty() ? "" : told + " ") + TextOf(date),
            std::regex_replace(row.back(), std::regex("this year"), thisYear));
        EXPECT_EQ(date, DateOf(date.GetYear(), date.GetMonth(), date.GetDay()));
    }
    const LibDate day = DateOf(2001, 10, 24); // a Wednesday
    LibDate walking = day;
    EXPECT_TRUE(walking++ == day && walking == day + 1 && --walking == day && walking-- == day);
    EXPECT_TRUE(walking == day - 1 && ++walking == day);
    struct tm fields { };
    fields.tm_mday = 29, fields.tm_mon = 1, fields.tm_year = 104;
    walking.SetDate(&fields);
    walking.SetDate(static_cast<struct tm*>(nullptr));
    EXPECT_EQ(TextOf(walking), "2004-2-29");
    EXPECT_FALSE(DateOf(2001, INT32_MAX, 1).CorrectDate() || LibDate().CorrectDate());
    EXPECT_EQ(Printed(day), "LibDate: 10/24/2001 (2452206)\n");
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

TEST(LibDate, NamesTheBeginningOfATextThatItCannotRead)
{
    testing::internal::CaptureStderr();
    const std::string x(79, 'x'); // and a letter of two bytes, the first of which is the 80th
    EXPECT_FALSE(LibDate().SetUnformattedDate((x + "\xc3\xa4").c_str()));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Unable to read the date <" + x + ">\n");
}
