#include "foundation/LibDateTime.h"

#include <cstdio>
#include <memory>
#include <string>
#include <tuple>

#include <gtest/gtest.h>
#include <Message.h>

#include "tests/foundation/ZoneGuard.h"

namespace {

std::string IsoOf(const LibDateTime& moment, int16 offset = 0)
{
    LibString text;
    moment.GetIso8601(text, offset);
    return static_cast<const char*>(text);
}

// What the date tool shows, in the zone of the environment, for a moment; "" without the tool.
std::string DateToolOf(int32 moment)
{
    const std::string command = "date -d @" + std::to_string(moment) + " +%Y%m%dT%H%M%S";
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    char line[64] = "";
    if (pipe == nullptr || fgets(line, sizeof(line), pipe.get()) == nullptr)
        return "";
    return std::string(line, std::string(line).find('\n'));
}

} // namespace

TEST(LibDateTime, ShowsMomentsAsTheDateToolDoes)
{
    for (const char* zone : { "UTC", "EST5EDT,M3.2.0,M11.1.0", "IST-5:30" }) {
        const ZoneGuard guard(zone);
        if (DateToolOf(0).empty())
            GTEST_SKIP() << "no date tool";
        for (const int32 moment :
            { 0, 951782399, 951868800, 986050800, -1, INT32_MIN, INT32_MAX, 1004248800 }) {
            SCOPED_TRACE(std::string(zone) + " " + std::to_string(moment));
            LibDateTime local;
            local.SetDateTime(moment, true);
            EXPECT_EQ(IsoOf(local), DateToolOf(moment));
            LibDateTime utc;
            utc.SetDateTime(moment, false);
            const LibDateTime epoch(1, 1, 1970);
            EXPECT_EQ(utc - epoch, moment);
        }
    }
}

TEST(LibDateTime, Iso8601MovesByTheOffsetAndBack)
{
    const LibDateTime moment(LibDate(2, 3, 2001), LibTime(4, 5, 6));
    EXPECT_EQ(IsoOf(moment), "20010203T040506");
    EXPECT_EQ(IsoOf(moment, -5), "20010202T230506Z");
    EXPECT_EQ(IsoOf(LibDateTime(12, 31, 1999), 24), "20000101T000000Z");
    const std::tuple<const char*, int16, std::string> rows[] = {
        { "20010202T230506Z", -5, "20010203T040506" }, { "-440101T000000", 0, "-440101T000000" },
        { "123450101T000000", 0, "123450101T000000" }, { "20010230T000000", 0, "" },
        { "20010203T240000", 0, "" }, { "20010203T0405", 0, "" }, { "20010203T040506ZZ", 0, "" },
        { "20010203", 0, "" }, { "0203T040506", 0, "" }, { "00000203T040506", 0, "" },
        { "20010203T-40506", 0, "" }, { "999999999990101T000000", 0, "" }, { nullptr, 0, "" }
    };
    for (const auto& [text, offset, expected] : rows) { // "" for a refused one
        SCOPED_TRACE(text != nullptr ? text : "null");
        LibDateTime read(moment);
        const bool isRead = read.SetIso8601(text, offset);
        EXPECT_EQ(isRead ? IsoOf(read) : "", expected);
        EXPECT_TRUE(isRead || read == moment);
    }
}

TEST(LibDateTime, ArithmeticCarriesIntoTheDate)
{
    LibDateTime moment(12, 31, 1999);
    moment.AddSeconds(86400);
    EXPECT_EQ(IsoOf(moment), "20000101T000000");
    moment.AddMinutes(-1);
    moment.AddHours(24 * 60);
    EXPECT_EQ(IsoOf(moment), "20000229T235900");
    const LibDateTime later(LibDate(3, 2, 2000), LibTime(0, 0, 59));
    // 1.98 minutes more than a day: the difference within the day, -1438.02, is what is cut off.
    EXPECT_EQ(later.MinutesSince(moment), 24 * 60 + 2);
    EXPECT_EQ(moment.MinutesSince(later), -24 * 60 - 2);
    EXPECT_EQ(later - moment, 86400 + 60 + 59);
    LibDateTime none;
    none.AddHours(1);
    EXPECT_EQ(IsoOf(none), "00000T010000"); // a date that is none stays none
}

TEST(LibDateTime, SetReadsLocalMomentsOnly)
{
    LibDateTime moment;
    EXPECT_TRUE(moment.Set("100000000 seconds before 12 mar 2001"));
    for (const char* text : { "12 mar 2001 17:30 +0100", "whenever", "" })
        EXPECT_FALSE(moment.Set(text)) << text;
    EXPECT_FALSE(moment.Set(LibString(nullptr)));
    EXPECT_EQ(IsoOf(moment), "19980109T141320");
}

TEST(LibDateTime, TravelsThroughStructTmAndMessages)
{
    const LibDateTime moment(LibDate(2, 3, 2001), LibTime(4, 5, 6));
    struct tm fields { };
    moment.GetDateTime(&fields);
    EXPECT_EQ(fields.tm_wday, 6);
    EXPECT_EQ(fields.tm_yday, 33);
    EXPECT_EQ(fields.tm_isdst, -1);
    LibDateTime other;
    other.SetDateTime(&fields);
    EXPECT_EQ(other, moment);
    BMessage message;
    EXPECT_EQ(moment.Archive(message), B_OK);
    LibDateTime restored;
    EXPECT_EQ(restored.Restore(message), B_OK);
    testing::internal::CaptureStderr();
    restored.PrintToStream();
    EXPECT_EQ(
        testing::internal::GetCapturedStderr(), "LibDate: 2/3/2001 (2451943)\nTime: 04:05:06\n");
    message.ReplaceInt32("date", 1);
    message.ReplaceInt32("minutes", 60);
    EXPECT_EQ(restored.Restore(message), B_BAD_VALUE);
    message.RemoveName("hours");
    EXPECT_EQ(restored.Restore(message), B_NAME_NOT_FOUND);
    EXPECT_EQ(restored, moment); // not half of it
}
