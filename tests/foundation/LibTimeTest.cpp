#include "foundation/LibTime.h"

#include "tests/foundation/ZoneGuard.h"
#include "tests/support/Test.h"

namespace {

std::string TextOf(const LibTime& time)
{
    return std::to_string(time.GetHours()) + ":" + std::to_string(time.GetMinutes()) + ":"
        + std::to_string(time.GetSeconds());
}

} // namespace

TEST(LibTime, AddingCarriesWholeDaysInBothDirections)
{
    const std::tuple<LibTime, int32, const char*, int32> rows[] = { { LibTime(23, 59, 59), 1,
                                                                        "0:0:0", 1 },
        { LibTime(0, 0, 0), -1, "23:59:59", -1 }, { LibTime(0, 0, 0), -86400, "0:0:0", -1 },
        { LibTime(12, 0, 0), 86400 * 3 + 61, "12:1:1", 3 }, { LibTime(25, -1, 61), 0, "1:0:1", 1 },
        { LibTime(0, 0, 0), INT32_MIN, "20:45:52", -24856 } };
    for (const auto& [from, seconds, to, days] : rows) {
        SCOPED_TRACE(TextOf(from));
        LibTime time(from);
        EXPECT_EQ(time.AddSeconds(seconds), days);
        EXPECT_EQ(TextOf(time), to);
    }
}

TEST(LibTime, CountsSinceMidnight)
{
    const LibTime time(17, 30, 15);
    EXPECT_FLOAT_EQ(time.NumberOfMinutes(), 1050.25f);
    EXPECT_EQ(time - LibTime(17, 31, 0), -45);
    LibTime back;
    back.SetTime(time.NumberOfMinutes());
    EXPECT_EQ(back, time);
}

TEST(LibTime, ReadsFixedAndFreeForms)
{
    // Whether the form is fixed; "" for a refused text.
    const std::tuple<bool, const char*, std::string> rows[] = { { true, "04:05:06", "4:5:6" },
        { true, "04.05", "4:5:0" }, { true, "04:5", "" }, { true, "04:05:6", "" },
        { false, "17.30.15", "17:30:15" }, { false, "530", "5:30:0" },
        { false, "173015", "17:30:15" }, { false, "5 pm", "17:0:0" },
        { false, "12:30 AM", "0:30:0" }, { false, "Noon", "12:0:0" }, { false, "17 pm", "" },
        { false, "12 noon", "" }, { false, "5:60", "" }, { false, "5:300", "" },
        { false, "1234567", "" }, { false, "", "" } };
    for (const auto& [isFixed, text, expected] : rows) {
        SCOPED_TRACE(text ? text : "null");
        LibTime time(9, 9, 9);
        const bool isRead = isFixed ? time.SetTime(text) : time.SetUnformattedTime(text);
        EXPECT_EQ(isRead ? TextOf(time) : "", expected);
        EXPECT_TRUE(isRead || time == LibTime(9, 9, 9));
    }
}

TEST(LibTime, TakesTheTimeOfAMomentInTheZoneOrInUtc)
{
    const ZoneGuard zone("NST3:30"); // three and a half hours behind
    LibTime time;
    time.SetTime(time_t { 3600 }, true);
    EXPECT_EQ(TextOf(time), "21:30:0");
    time.SetTime(time_t { 3600 }, false);
    EXPECT_EQ(TextOf(time), "1:0:0");
}
