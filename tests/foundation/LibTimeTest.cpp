#include "foundation/LibTime.h"

#include "tests/foundation/ZoneGuard.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

namespace {

std::string TextOf(const LibTime& time)
{
    testing::internal::CaptureStderr();
    time.PrintToStream();
    return testing::internal::GetCapturedStderr();
}

} // namespace

TEST(LibTime, ChangesCarryWholeDaysInBothDirections)
{
    const LibTime midnight;
    const LibTime noon(12, 0, 0);
    const std::tuple<LibTime, std::function<int32(LibTime&)>, std::string, int32> rows[] = {
        { LibTime(23, 59, 59), [](LibTime& t) { return t.AddSeconds(1); }, "00:00:00", 1 },
        { midnight, [](LibTime& t) { return t.AddSeconds(-1); }, "23:59:59", -1 },
        { midnight, [](LibTime& t) { return t.AddSeconds(-86400); }, "00:00:00", -1 },
        { noon, [](LibTime& t) { return t.AddSeconds(86400 * 3 + 61); }, "12:01:01", 3 },
        { LibTime(25, -1, 61), [](LibTime& t) { return t.CorrectTime(); }, "01:00:01", 1 },
        { midnight, [](LibTime& t) { return t.AddSeconds(INT32_MIN); }, "20:45:52", -24856 },
        { noon, [](LibTime& t) { return t.AddMinutes(INT32_MAX); }, "14:07:00", 1491308 },
        { noon, [](LibTime& t) { return t.AddHours(INT32_MAX); }, "19:00:00", 89478485 },
        { noon, [](LibTime& t) { return t.TimeZone(-13); }, "23:00:00", -1 },
        { noon, [](LibTime& t) { return t.SetTime(-0.5f), 0; }, "23:59:30", 0 },
        { noon, [](LibTime& t) { return t.SetTime(1440.25f), 0; }, "00:00:15", 0 },
        { noon, [](LibTime& t) { return t.SetTime(NAN), 0; }, "12:00:00", 0 },
        { noon, [](LibTime& t) { return t.SetTime(static_cast<struct tm*>(nullptr)), 0; },
            "12:00:00", 0 },
    };
    for (const auto& [from, change, to, days] : rows) {
        LibTime time(from);
        EXPECT_EQ(change(time), days) << to;
        EXPECT_EQ(TextOf(time), "Time: " + to + "\n");
    }
    const LibTime time(17, 30, 15);
    EXPECT_FLOAT_EQ(time.NumberOfMinutes(), 1050.25f);
    EXPECT_EQ(time.NumberOfSeconds() + (time - LibTime(17, 31, 0)), 63015 - 45);
    std::string valid;
    for (const auto& [h, m, s] : { std::tuple(0, 0, 0), { 23, 59, 59 }, { 24, 0, 0 }, { 0, 60, 0 },
             { 0, 0, 60 }, { -1, 0, 0 }, { 0, -1, 0 }, { 0, 0, -1 } })
        valid += LibTime(h, m, s).IsValidTime() ? "y" : "n";
    EXPECT_EQ(valid, "yynnnnnn");
}

TEST(LibTime, ReadsFixedAndFreeForms)
{
    for (const Row& row : RowsOf("foundation/data/written-times.txt", 3)) {
        SCOPED_TRACE(row[1]);
        LibTime time(9, 9, 9);
        const char* text = row[1] == "null" ? nullptr : row[1].c_str();
        const bool isRead = row[0] == "free" ? time.SetUnformattedTime(text) : time.SetTime(text);
        EXPECT_EQ(isRead, row[2] != "-");
        EXPECT_EQ(TextOf(time), "Time: " + (isRead ? row[2] : "09:09:09") + "\n");
    }
}

TEST(LibTime, TakesTheTimeOfAMomentInTheZoneOrInUtc)
{
    const ZoneGuard zone("NST3:30"); // three and a half hours behind
    LibTime local, utc;
    local.SetTime(time_t { 3600 }, true);
    utc.SetTime(time_t { 3600 }, false);
    EXPECT_EQ(TextOf(local) + TextOf(utc), "Time: 21:30:00\nTime: 01:00:00\n");
    const LibTime now(true), there(true, false);
    const int32 ahead = there - now; // and maybe a second, or a day less
    EXPECT_TRUE((ahead + 86400) % 86400 == 12600 || (ahead + 86400) % 86400 == 12601) << ahead;
}
