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
