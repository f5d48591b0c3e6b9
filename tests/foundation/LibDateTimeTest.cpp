#include "foundation/LibDateTime.h"

#include "tests/foundation/ZoneGuard.h"
#include "tests/support/Calls.h"
#include "tests/support/Printed.h"
#include "tests/support/Test.h"

#include <Message.h>

namespace {

std::string IsoOf(const LibDateTime& moment, int16 offset = 0)
{
    LibString text;
    moment.GetIso8601(text, offset);
    return static_cast<const char*>(text);
}

} // namespace

TEST(LibDateTime, ShowsMomentsInTheZone)
{
    for (const Row& row : RowsOf("foundation/data/zones.txt", 3)) {
        const ZoneGuard guard(row[0].c_str());
        const int32 moment = std::stoi(row[1]);
        LibDateTime local, utc;
        local.SetDateTime(moment, true);
        utc.SetDateTime(moment, false);
        EXPECT_EQ(IsoOf(local), row[2]);
        EXPECT_EQ(utc - LibDateTime(1, 1, 1970), moment);
    }
    const ZoneGuard guard("NST3:30");
    const LibDateTime now(true);
    LibDateTime utc;
    utc.SetNow(false);
    EXPECT_EQ((utc - now) / 1000, 12); // 12600 seconds
}

TEST(LibDateTime, Iso8601MovesByTheOffset)
{
    const LibDateTime moment(LibDate(2, 3, 2001), LibTime(4, 5, 6));
    EXPECT_EQ(IsoOf(moment), "20010203T040506");
    EXPECT_EQ(IsoOf(moment, -5), "20010202T230506Z");
    EXPECT_EQ(IsoOf(LibDateTime(12, 31, 1999), 24), "20000101T000000Z");
}

TEST(LibDateTime, ChangesCarryIntoTheDate)
{
    const Calls<LibDateTime> calls = { { "AddSeconds", Function(&LibDateTime::AddSeconds) },
        { "AddMinutes", Function(&LibDateTime::AddMinutes) },
        { "AddHours", Function(&LibDateTime::AddHours) }, { "Set", Function(&LibDateTime::Set) },
        { "SetIso8601", Function(&LibDateTime::SetIso8601) } };
    for (const Row& row : RowsOf("foundation/data/date-time-changes.txt", 4)) {
        LibDateTime moment;
        EXPECT_TRUE(moment.SetIso8601(row[0].c_str(), 0));
        const std::string told = calls.at(row[1])(moment, row);
        EXPECT_EQ((told.empty() ? "" : told + " ") + IsoOf(moment), row.back()) << row[2];
    }
    const LibDateTime moment(LibDate(2, 29, 2000), LibTime(23, 59, 0));
    const LibDateTime later(LibDate(3, 2, 2000), LibTime(0, 0, 59));
    // 1.98 minutes more than a day: the difference within the day, -1438.02, is what is cut off.
    EXPECT_EQ(later.MinutesSince(moment), 24 * 60 + 2);
    EXPECT_EQ(moment.MinutesSince(later), -24 * 60 - 2);
    EXPECT_EQ(later - moment, 86400 + 60 + 59);
}

TEST(LibDateTime, TravelsThroughStructTmAndMessages)
{
    const LibDateTime moment(LibDate(2, 3, 2001), LibTime(4, 5, 6));
    struct tm fields { };
    moment.GetDateTime(nullptr);
    moment.GetDateTime(&fields);
    EXPECT_EQ(std::tuple(fields.tm_sec, fields.tm_min, fields.tm_hour, fields.tm_mday,
                  fields.tm_mon, fields.tm_year, fields.tm_wday, fields.tm_yday, fields.tm_isdst),
        std::tuple(6, 5, 4, 3, 1, 101, 6, 33, -1));
    LibDateTime other;
    other.SetDateTime(&fields);
    EXPECT_EQ(Printed(other), "LibDate: 2/3/2001 (2451943)\nTime: 04:05:06\n");
    BMessage message;
    EXPECT_EQ(moment.Archive(message), B_OK);
    LibDateTime restored;
    EXPECT_EQ(restored.Restore(message), B_OK);
    EXPECT_EQ(restored, moment);
    for (const char* name : { "date", "hours", "minutes", "seconds" }) {
        BMessage damaged(message);
        damaged.RemoveName(name);
        EXPECT_EQ(restored.Restore(damaged), B_NAME_NOT_FOUND) << name;
        damaged.AddInt32(name, 99);
        EXPECT_EQ(other.Restore(damaged), name[0] == 'd' ? status_t { B_OK } : B_BAD_VALUE);
    }
    EXPECT_EQ(restored, moment); // not half of it
}
