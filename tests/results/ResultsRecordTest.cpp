#include "results/Results.h"
#include "results/ResultsFile.h"
#include "tests/foundation/LocaleGuard.h"
#include "tests/support/Test.h"

namespace {

constexpr char kRecord[] = "AT Clone (2-Intel Pentium II@400/100MHz) 128MB RAM\t"
                           "-1:8 bit color, 1024x768 resolution\t"
                           "1:Example Vendor, IDE Controller\t"
                           "100:1000/0.412000,0.790000;"
                           "700:50/1234567936.000000;";

} // namespace

TEST(ResultsRecord, FileIsVersionLengthAndRecordUnderAnyLocaleOrWhyNot)
{
    const TempFolder folder;
    const std::string path = folder / "file";
    const std::string record = std::string(kRecord) + "600:1/;";
    Results results(false);
    results.Read(kRecord);
    results.NewTest("Whetstone", 1)->Index(600); // no time yet
    WriteFile(path, std::string(1000, 'x'));
    const LocaleGuard german("de_DE.UTF-8");
    EXPECT_TRUE(WriteResultsFile(path.c_str(), results));
    EXPECT_EQ(ReadFile(path), "1.0\n" + std::to_string(record.size()) + "\n" + record + "\n");
    testing::internal::CaptureStderr();
    std::string why;
    EXPECT_FALSE(WriteResultsFile("/dev/full", results, &why));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Error writing </dev/full>: " + why + "\n");
    EXPECT_EQ(why, strerror(ENOSPC));
    if (!german.IsSet())
        GTEST_SKIP() << "No locale de_DE.UTF-8 here: seen in the C locale only";
}

TEST(ResultsRecord, OfTooManyDevicesTheLastOnesAreLeftOutAndNothingElse)
{
    std::string devices;
    for (int i = 0; i < 200; i++)
        devices += "6:" + std::string(97, 'd') + "\t";
    Results results(false);
    const size_t place = std::string(kRecord).find("100:1000");
    results.Read(std::string(kRecord).insert(place, devices + "6:would fit\t").c_str());
    char buffer[kRecordSize + 1];
    buffer[kRecordSize] = '#';
    testing::internal::CaptureStderr();
    EXPECT_FALSE(results.Write(buffer));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "The record of <AT Clone (2-Intel Pentium II@400/100MHz) 128MB RAM> was shortened to "
        "9000 bytes\n");
    EXPECT_EQ(buffer[kRecordSize], '#');
    const std::string record(buffer);
    const size_t added = record.size() - (sizeof(kRecord) - 1);
    EXPECT_EQ(added % 100, 0u); // whole fields
    EXPECT_GT(record.size() + 100, static_cast<size_t>(kRecordSize - 1)); // and no room for another
    EXPECT_TRUE(record.ends_with("d\t" + std::string(strstr(kRecord, "100:"))));
    std::string metrics; // too many alone
    for (int i = 0; i < 500; i++)
        metrics += "700:50/1.000000,2.000000;";
    Results many(false);
    many.Read(std::string(kRecord).insert(place, metrics).c_str());
    EXPECT_FALSE(many.Write(buffer));
    EXPECT_EQ(
        buffer, std::string(kRecord, strchr(kRecord, '\t') + 1) + metrics.substr(0, 357 * 25));
    for (const size_t size : { kRecordSize - 2, kRecordSize - 1 }) { // with a tab behind it
        Results named(false);
        named.description = std::string(size, 'x').c_str();
        EXPECT_EQ(named.Write(buffer), size == kRecordSize - 2);
        EXPECT_EQ(buffer, std::string(kRecordSize - 2, 'x') + "\t");
    }
}
