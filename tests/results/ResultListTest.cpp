#include "results/Results.h"
#include "results/ResultsFile.h"
#include "tests/foundation/LocaleGuard.h"
#include "tests/support/Rows.h"
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
        messages =
            std::regex_replace(testing::internal::GetCapturedStderr(), std::regex(path), "FILE");
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
    const LocaleGuard german("de_DE.UTF-8"); // whose decimal point is a comma
    std::vector<TextRow> rows = ReadRows("results/data/records");
    rows.push_back({ "P\xc3\xa4\x1b[2J (1-x)\t\x7f\t\xc2\x9b\xe2\x80\xae\x9b:",
        "1 of P\xc3\xa4\x1b[2J (1-x)\t0:\x7f\t\nUnable to get class id for <\\x7f>\n"
        "Error extracting metric type for <P\xc3\xa4\\x1b[2J (1-x)>. "
        "<\\xc2\\x9b\\xe2\\x80\\xae\\x9b>" });
    for (const auto& [record, told] : rows) {
        Loaded loaded(FileOf(record));
        ASSERT_EQ(loaded.list.Size(), 1);
        EXPECT_EQ(Contents(*loaded.list.First()) + "\n" + loaded.messages, told + "\n") << record;
        EXPECT_FALSE(loaded.list.First()->current);
    }
}

TEST(ResultList, AFileIsReadByItsLengthsAndNeverBeyondThem)
{
    for (const Row& row : RowsOf("results/data/files", 3)) {
        SCOPED_TRACE(row[0]);
        Loaded loaded(row[0]);
        EXPECT_EQ(std::to_string(loaded.list.Size()), row[1]);
        EXPECT_EQ(loaded.messages, row[2]);
        for (Results* machine = loaded.list.First(); machine; machine = loaded.list.Next())
            EXPECT_EQ(Contents(*machine), "1 of PC (1-x)\t200:1/0.500000;");
    }
    const std::string longest(18000, 'x');
    EXPECT_EQ(Loaded("1.0\n20000\n" + longest + "\n").list.Size(), 1);
    EXPECT_EQ(Loaded("1.0\n20000000\n" + longest + "x\n2\nPC\n").messages,
        "<FILE>: 1 records longer than 18000 characters are left out\n");
    ResultList list;
    EXPECT_FALSE(ReadResultsFile("/nowhere/Tarvex.results", list));
    EXPECT_TRUE(ReadResultsFile("/tmp", list)); // a folder has no records
    std::string many = "1.0";
    for (int i = 0; i < 40000; i++)
        many += "\n1\nx";
    const Loaded loaded(many);
    EXPECT_GT(loaded.list.Size(), 2000);
    EXPECT_EQ(loaded.messages,
        "<FILE>: " + std::to_string(40000 - loaded.list.Size())
            + " machines are left out: they need more than 6 times the memory that the file has "
              "bytes\n");
}
