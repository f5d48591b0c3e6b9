#include "results/Results.h"
#include "results/ResultsFile.h"
#include "tests/foundation/LocaleGuard.h"
#include "tests/support/Test.h"

namespace {

// What a file of these bytes makes of a list, and what is said of it on standard error.
struct Loaded {
    explicit Loaded(const std::string& bytes)
    {
        const TempFolder folder;
        const std::string path = folder / "file";
        WriteFile(path, bytes);
        testing::internal::CaptureStderr();
        EXPECT_TRUE(ReadResultsFile(path.c_str(), list));
        messages = testing::internal::GetCapturedStderr();
        for (size_t at = 0; (at = messages.find(path)) != std::string::npos;)
            messages.replace(at, path.size(), "FILE");
    }

    ResultList list;
    std::string messages;
};

std::string FileOf(const std::string& record)
{
    return "1.0\n" + std::to_string(record.size()) + "\n" + record + "\n";
}

// What was read, as the record that would be written.
std::string Contents(Results& machine)
{
    char record[kRecordSize];
    EXPECT_TRUE(machine.Write(record));
    return std::to_string(machine.nbrCpus) + " of " + record;
}

} // namespace

TEST(ResultList, ARecordIsReadByItsRules)
{
    constexpr char kMissing[] = "Error extracting time for metric <Memory> (200)\n";
    const std::tuple<const char*, std::string, const char*, std::string> rows[] = {
        { "whole", "PC (2-x@1/2MHz)\t-1:8 bit color\t1:A: B, C\t100:126/0.5,1.5;700:9/2.0,4.0;",
            "2 of PC (2-x@1/2MHz)\t-1:8 bit color\t1:A: B, C\t100:126/0.500000,1.500000;"
            "700:9/2.000000,4.000000;",
            "" },
        { "no bracket: the first character", "2 CPUs\t200:1/0.5,1.0;",
            "2 of 2 CPUs\t200:1/0.500000,1.000000;", "" },
        { "a letter counts as none", "PC\t200:1/", "0 of PC\t200:1/;", "" },
        { "fields of the next metric are times", "PC (4-x)\t200:1/0.5,1.0;700:5/3.0,4.0;",
            "4 of PC (4-x)\t200:1/0.500000,1.000000,4.000000;",
            std::string("<700:5/3.0>\n") + kMissing },
        { "nine claimed, eight kept", "PC (9-x)\t200:1/1,2,3,4,5,6,7,8,9;",
            "9 of PC (9-x)\t200:1/1.000000,2.000000,3.000000,4.000000,5.000000,6.000000,7.000000,"
            "8.000000;",
            "No room for another time of <Memory>\n" },
        { "no numbers", "PC (3-x)\t200:1/nan,1e400,-inf;", "3 of PC (3-x)\t200:1/;",
            std::string("<nan>\n") + kMissing + "<1e400>\n" + kMissing + "<-inf>\n" + kMissing },
        { "an unknown test is kept", "PC (1-x)\t1099:7/2.5;", "1 of PC (1-x)\t1099:7/2.500000;",
            "" },
        { "id and cycles are words", "PC (1-x)\tabc:200:x/2.5;", "1 of PC (1-x)\t200:1/2.500000;",
            "Error extracting metric type for <PC (1-x)>. <abc>\n"
            "Error extracting number of iterations\n" },
        { "what a terminal would obey", "P\xc3\xa4\x1b[2J (1-x)\t\x7f\t\xc2\x9b\xe2\x80\xae\x9b:",
            "1 of P\xc3\xa4\x1b[2J (1-x)\t0:\x7f\t",
            "Unable to get class id for <\\x7f>\n"
            "Error extracting metric type for <P\xc3\xa4\\x1b[2J (1-x)>. "
            "<\\xc2\\x9b\\xe2\\x80\\xae\\x9b>\n" },
        { "a device without class", "PC (1-x)\t3:Card\tnothing\t200:1/2.5;",
            "1 of PC (1-x)\t3:Card\t3:nothing\t200:1/2.500000;",
            "Unable to get class id for <nothing>\n" },
        { "cut in a time: the rest is tried as a metric", "PC (2-x)\t200:1/0.5,1.",
            "2 of PC (2-x)\t200:1/0.500000;1:1/;",
            std::string("<1.>\n") + kMissing + "Error extracting number of iterations\n"
                + "<.>\nError extracting time for metric <> (1)\n"
                + "<.>\nError extracting time for metric <> (1)\n" },
    };
    const LocaleGuard german("de_DE.UTF-8"); // whose decimal point is a comma
    for (const auto& [name, record, contents, messages] : rows) {
        SCOPED_TRACE(name);
        Loaded loaded(FileOf(record));
        ASSERT_EQ(loaded.list.Size(), 1);
        EXPECT_EQ(Contents(*loaded.list.First()), contents);
        EXPECT_EQ(loaded.messages, messages);
        EXPECT_FALSE(loaded.list.First()->current);
    }
}

TEST(ResultList, AFileIsReadByItsLengthsAndNeverBeyondThem)
{
    const std::string record = "PC (1-x)\t200:1/0.5;";
    const std::string whole = FileOf(record);
    const std::string pair = whole.substr(4);
    const std::string huge(20'000'000, 'x');
    const std::tuple<const char*, std::string, int, std::string> rows[] = {
        { "version only", "1.0\n", 0, "" },
        { "two machines", whole + pair, 2, "" },
        { "no end of line", whole.substr(0, whole.size() - 1), 1, "" },
        { "mailed", "1.0\r\n" + std::to_string(record.size()) + "\r\n" + record + "\r\n", 1, "" },
        { "too long a length stops at the line's end", "1.0\n1000000000\n" + record + "\n" + pair,
            2, "" },
        { "no lengths", "1.0\n\x1b[2J\n0\n-1\n2147483648\nPC\n" + pair, 1,
            "<FILE>: 5 lines are no length of a record, the first <\\x1b[2J>\n" },
        { "a line that is no record", "1.0\n20000000\n" + huge + "\n" + pair, 1,
            "<FILE>: 1 records longer than 18000 characters are left out\n" },
        { "a NUL ends a record", "1.0\n30\nPC (1-x)\t200:1/0.5;" + std::string(11, '\0') + "\n", 1,
            "" },
    };
    for (const auto& [name, bytes, machines, messages] : rows) {
        SCOPED_TRACE(name);
        Loaded loaded(bytes);
        EXPECT_EQ(loaded.list.Size(), machines);
        EXPECT_EQ(loaded.messages, messages);
        for (Results* machine = loaded.list.First(); machine; machine = loaded.list.Next())
            EXPECT_EQ(Contents(*machine), "1 of PC (1-x)\t200:1/0.500000;");
    }
    ResultList list;
    EXPECT_FALSE(ReadResultsFile("/nowhere/Tarvex.results", list));
    EXPECT_TRUE(ReadResultsFile("/tmp", list)); // a folder has no records
}

TEST(ResultList, AFilesMachinesKeepToItsSizeInMemoryAndRealOnesAreAllKept)
{
    std::string bytes = "1.0\n";
    constexpr int kTiny = 100'000;
    for (int i = 0; i < kTiny; i++)
        bytes += "5\n5\n";
    Loaded tiny(bytes);
    const int kept = tiny.list.Size();
    EXPECT_GT(kept, 10'000);
    EXPECT_LT(kept, (32 << 20) / int(sizeof(Results)) / 2);
    EXPECT_EQ(tiny.messages,
        "<FILE>: " + std::to_string(kTiny - kept)
            + " machines are left out: they need more than 6 times the memory that the file has "
              "bytes\n");

    std::string record = "PC (4-x@1/2MHz) 100MB RAM\t-1:8 bit color, 1024x768 resolution\t";
    for (int i = 0; i < 30; i++)
        record += "1032:1000/12.000000,13.000000,14.000000,15.000000;";
    bytes = "1.0\n";
    constexpr int kReal = 4000;
    for (int i = 0; i < kReal; i++)
        bytes += FileOf(record).substr(4);
    Loaded real(bytes);
    EXPECT_EQ(real.list.Size(), kReal);
    EXPECT_EQ(real.messages, "");
}

TEST(ResultList, TheCurrentMetricsGiveTheScaleAndMissingOnesAreReported)
{
    Loaded loaded(FileOf("A (2-x)\t200:10/0.5,2.0;700:5/0.001,1;")
        + FileOf("B (1-x)\t200:10/0.25;").substr(4) + FileOf("C\t").substr(4));
    ResultList& list = loaded.list;
    testing::internal::CaptureStderr();
    list.FirstCurrent();
    EXPECT_EQ(list.MaxRate(), 40);
    Metric sieve;
    sieve.Description("Sieve");
    list.MakeCurrent(sieve);
    EXPECT_EQ(list.MaxRate(), 5000);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "Unable to make first current <C>\n"
        "Unable to make given metric <Sieve> current\n"
        "Unable to make given metric <Sieve> current\n");
    EXPECT_EQ(list.First()->Current()->index, 700);
    EXPECT_EQ(list.Next()->Current(), nullptr);
    EXPECT_EQ(ResultList().MaxRate(), 0);
}
