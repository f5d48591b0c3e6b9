#include "foundation/LibParseDate.h"

#include "foundation/LibDateTime.h"
#include "tests/foundation/ZoneGuard.h"
#include "tests/support/Test.h"

namespace {

const LibDate kToday(10, 24, 2001); // a Wednesday
const LibTime kNow(13, 30, 15);

// The moment that text means, the distance in seconds added; "" for a refused text.
std::string Meaning(const std::string& text, const LibDate& today = kToday)
{
    LibParsedDate parsed;
    if (!LibParseDate(text, LibDateConventions::English(), today, kNow, parsed))
        return "";
    LibDateTime moment(parsed.date, parsed.time);
    moment.AddSeconds(static_cast<int32>(parsed.seconds));
    LibString iso;
    moment.GetIso8601(iso, 0);
    return static_cast<const char*>(iso);
}

} // namespace

TEST(LibParseDate, ReadsWhatPeopleType)
{
    const std::pair<const char*, const char*> rows[] = { { "now", "20011024T133015" },
        { " Today ", "20011024T000000" }, { "yesterday at noon", "20011023T120000" },
        { "next wednesday", "20011031T000000" }, { "last wed. 5:30 pm", "20011017T173000" },
        { "on friday at 10:00", "20011026T100000" }, { "3 days ago", "20011021T133015" },
        { "in 2 weeks", "20011107T133015" }, { "-90 minutes", "20011024T120015" },
        { "an hour and 5 minutes from now", "20011024T143515" },
        { "2 days, 3 hours ago", "20011022T103015" },
        { "the day after tomorrow", "20011026T000000" },
        { "2 weeks before 12 mar 2001", "20010226T000000" },
        { "12 mar 14 days ago", "20010226T000000" }, { "17:00 +1000 days", "20040720T170000" },
        { "Mar. 1st, 2001 17:30:15", "20010301T173015" }, { "12 mar 99 09:55", "19990312T095500" },
        { "12-Mar-2001", "20010312T000000" }, { "2001-03-12T17:30", "20010312T173000" },
        { "20010312t173015", "20010312T173015" }, { "12/31/68", "20681231T000000" },
        { "12/31/69", "19691231T000000" }, { "12/31 5pm", "20011231T170000" },
        { "31.12.1999", "19991231T000000" }, { "12:15 p.m.", "20011024T121500" },
        { "fri, 21 Nov 1997", "19971121T000000" }, { "april 2, 2001", "20010402T000000" },
        { "two seconds ago", "20011024T133013" }, { "a sec later", "20011024T133016" },
        { "ten mins hence", "20011024T134015" }, { "one hr from now", "20011024T143015" },
        { "three months ago", "20010724T133015" }, { "four years later", "20051024T133015" },
        { "in five yrs", "20061024T133015" }, { "in six weeks", "20011205T133015" },
        { "seven days hence", "20011031T133015" }, { "eight hours later", "20011024T213015" },
        { "in nine days", "20011102T133015" }, { "in eleven minutes", "20011024T134115" },
        { "in twelve days", "20011105T133015" }, { "midnight", "20011024T000000" },
        { "this wednesday", "20011024T000000" }, { "previous friday", "20011019T000000" },
        { "this week", "20011024T133015" }, { "last month", "20010924T133015" },
        { "next year", "20021024T133015" }, { "12th of march", "20010312T000000" },
        { "2001-mar-12", "20010312T000000" }, { "mar 2001", "20010301T000000" },
        { "mar 12 '99", "19990312T000000" }, { "mar 12 05:30", "20010312T053000" },
        { "12 am", "20011024T000000" }, { "1 pm", "20011024T130000" },
        { "11:59:59 pm", "20011024T235959" }, { "3.12.2001", "20011203T000000" },
        { "3/12", "20010312T000000" }, { "31 dec 9999", "99991231T000000" },
        { "1/1/0001", "10101T000000" }, { "wed 24 oct 2001", "20011024T000000" },
        { "noon on the 12 mar", "20010312T120000" }, { "17:00 + 2 days", "20011026T170000" } };
    for (const auto& [text, moment] : rows)
        EXPECT_EQ(Meaning(text), moment) << text;
    EXPECT_EQ(Meaning("next month", LibDate(1, 31, 2001)), "20010303T133015");
    EXPECT_EQ(Meaning("feb 29", LibDate(1, 31, 2000)), "20000229T000000");
    EXPECT_EQ(Meaning("tomorrow", LibDate(12, 31, 9999)), "");
}

TEST(LibParseDate, RefusesWhatHasNoMeaningOrTwo)
{
    const char* texts[] = { "", " , ", "whenever", "3 days", "3", "march", "12.3", "30 feb 2001",
        "feb 29", "13/1/2001", "1/2/345", "12/31-1999", "10/10/1582", "thu, 21 Nov 1997",
        "tomorrow friday", "12 mar 13 mar", "next 12 mar", "25:00", "5:60", "13 pm", "next", "at",
        "day ago", "+3", "17:00 utc", "tomorrow 17:00 +1560", "12 mar 2001 next monday",
        "12 mayat noon", "in 999999999 years", "1000000000 days ago", "1 day before 1/1/0001",
        "20011301", "12\xcc\x88 mar", "12 mar \xff 2001", "tomorroww", "todaya", "20011231 235959",
        "in 2 fortnights", "0 am", "13 am", "5:5", "5:30:5", "24:00", "12:30 pm am", "17:00 +1500",
        "17:00 +0160", "today z", "17:00 z z", "345 mar 2001", "mar 345", "4 mar 345",
        "2001 mar 123", "noon midnight", "monday tuesday", "2 days before", "1234567890 days ago" };
    for (const char* text : texts)
        EXPECT_EQ(Meaning(text), "") << text;
    EXPECT_EQ(Meaning(std::string("today\0", 6)), "");
    EXPECT_EQ(Meaning("today" + std::string(250, ' ')), "20011024T000000");
    EXPECT_EQ(Meaning("today" + std::string(100'000'000, ' ')), "");
}

TEST(QParseDate, KeepsHoursRightWhereTheClocksChange)
{
    const ZoneGuard zone("EST5EDT,M3.2.0,M11.1.0");
    const std::tuple<const char*, time_t, time_t> rows[] = {
        // 2024-11-03: at 06:00 UTC the clocks go from 2:00 back to 1:00.
        { "now", 1730615400, 1730615400 }, // 1:30 the second time
        { "in 1 hour", 1730611800, 1730615400 }, // from 1:30 to 1:30
        { "tomorrow", 1730611800, 1730696400 }, // midnight, now 5 hours behind
        { "in 1 day", 1730575800, 1730665800 }, // the same time of day: 25 hours
        // 2024-03-10: at 07:00 UTC from 2:00 to 3:00.
        { "3 hours ago", 1710068400, 1710057600 },
        { "Fri, 21 Nov 1997 09:55:06 -0600", 0, 880127706 }, { "2024-03-10T12:00Z", 0, 1710072000 },
        { "2024-03-10 12:00 +05:30", 0, 1710052200 }, { "2024-03-10 12:00 -0130", 0, 1710077400 },
        { "2024-03-10 12:00 UTC+1 hour", 0, 1710075600 }, { "10 mar 2024 1 am gmt", 0, 1710032400 },
        { "12 mar 2101 noon", 0, 4140090000 }, { "1 jan 1900", 0, -2208970800 }
    };
    for (const auto& [text, now, then] : rows)
        EXPECT_EQ(q_parsedate(text, now), then) << text;
    EXPECT_GE(q_parsedate("now", -1), 1700000000);
}

TEST(QParseDate, NamesWhatItCannotRead)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(q_parsedate("when pigs fly", 0), -1);
    EXPECT_EQ(q_parsedate(nullptr, 0), -1);
    EXPECT_EQ(q_parsedate("today", INT64_MAX), -1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "Unable to read the date <when pigs fly>\nUnable to read the date <>\n"
        "Unable to read the date <today>\n");
}
