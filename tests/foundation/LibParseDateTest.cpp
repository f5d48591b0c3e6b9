#include "foundation/LibParseDate.h"

#include "foundation/LibDateTime.h"
#include "tests/foundation/ZoneGuard.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

namespace {

const LibDate kWednesday(10, 24, 2001);
const LibTime kNow(13, 30, 15);

// The moment that text means, the distance in seconds added; "" for a refused text.
std::string Meaning(const std::string& text, const LibDate& today = kWednesday)
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
    for (const Row& row : RowsOf("foundation/data/dates.txt", 2))
        for (const char* blank : { " ", " \t" })
            EXPECT_EQ(Meaning(std::regex_replace(row[0], std::regex(" "), blank)),
                row[1] == "-" ? "" : row[1])
                << row[0];
    EXPECT_EQ(Meaning("next month", LibDate(1, 31, 2001)), "20010303T133015");
    EXPECT_EQ(Meaning("feb 29", LibDate(1, 31, 2000)), "20000229T000000");
    EXPECT_EQ(Meaning("tomorrow", LibDate(12, 31, 9999)), "");
    EXPECT_EQ(Meaning(std::string("today\0", 6)), "");
    EXPECT_EQ(Meaning("today" + std::string(250, ' ')), "20011024T000000");
    EXPECT_EQ(Meaning("today" + std::string(100'000'000, ' ')), "");
}

TEST(QParseDate, KeepsHoursRightWhereTheClocksChange)
{
    const ZoneGuard zone("EST5EDT,M3.2.0,M11.1.0");
    for (const Row& row : RowsOf("foundation/data/moments.txt", 3))
        EXPECT_EQ(q_parsedate(row[1].c_str(), std::stol(row[0])), std::stol(row[2])) << row[1];
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
