#include "foundation/LibTime.h"

#include "tests/foundation/ZoneGuard.h"
#include "tests/support/Calls.h"
#include "tests/support/Printed.h"
#include "tests/support/Test.h"

TEST(LibTime, ChangesCarryWholeDaysAndTextsAreRead)
{
    const Calls<LibTime> calls = { { "AddHours", Function(&LibTime::AddHours) },
        { "AddMinutes", Function(&LibTime::AddMinutes) },
        { "AddSeconds", Function(&LibTime::AddSeconds) },
        { "TimeZone", Function(&LibTime::TimeZone) },
        { "Correct", Function(&LibTime::CorrectTime) },
        { "IsValid", Function(&LibTime::IsValidTime) },
        { "SetMinutes", Function<const float&>(&LibTime::SetTime) },
        { "Columns", Function<const char*>(&LibTime::SetTime) },
        { "Free", Function(&LibTime::SetUnformattedTime) } };
    for (const Row& row : RowsOf("foundation/data/time-changes.txt", 4)) {
        int32 h = 0, m = 0, s = 0;
        EXPECT_EQ(sscanf(row[0].c_str(), "%d:%d:%d", &h, &m, &s), 3);
        LibTime time(h, m, s);
        const std::string days = calls.at(row[1])(time, row);
        EXPECT_EQ((days.empty() ? "" : days + " ") + Printed(time), row[3] + "\n")
            << testing::PrintToString(row);
    }
    LibTime time(17, 30, 15);
    time.SetTime(static_cast<struct tm*>(nullptr));
    EXPECT_FLOAT_EQ(time.NumberOfMinutes(), 1050.25f);
    EXPECT_EQ(time.NumberOfSeconds() + (time - LibTime(17, 31, 0)), 63015 - 45);
}

TEST(LibTime, IsThatOfTheZoneOrOfUtc)
{
    const ZoneGuard zone("NST3:30"); // three and a half hours behind
    const LibTime now(true), there(true, false);
    const int32 ahead = there - now; // and maybe a second, or a day less
    EXPECT_TRUE((ahead + 86400) % 86400 == 12600 || (ahead + 86400) % 86400 == 12601) << ahead;
}
