#include "SystemTree.h"
#include "TaskStat.h"
#include "tests/support/Test.h"

using namespace kernel;

TEST(MachineText, ATasksRecordIsReadWhateverItsName)
{
    TaskStat stat;
    EXPECT_TRUE(ParseTaskStat("12 (a) S (b) R 1 2 3 4 5 6 7 8 9 10 250 50 0\n", stat));
    EXPECT_EQ(stat.state, 'R');
    EXPECT_EQ(stat.userTime, 2500000);
    EXPECT_EQ(stat.kernelTime, 500000);
    EXPECT_EQ(stat.startTicks, 0u);
    EXPECT_TRUE(ParseTaskStat("1 (a) Z 1 2 3 4 5 6 7 8 9 10 0 7 3 4 5 6 7 8 777 9", stat));
    EXPECT_EQ(std::tuple(stat.state, stat.userTime, stat.kernelTime, stat.startTicks),
        std::tuple('Z', 0, 70000, 777u));
    EXPECT_FALSE(ParseTaskStat("1 (a) S 1 2 3 4 5 6 7 8 9 10 250", stat));
    EXPECT_FALSE(ParseTaskStat("12 (cut) R 1 2", stat));
    EXPECT_FALSE(ParseTaskStat("", stat));
}

TEST(MachineText, LinesAreFitForARecord)
{
    EXPECT_EQ(PlainLine("  a\tb \x01\xff\xc3\xa4\r\nnext"), "a b ??\xc3\xa4");
    EXPECT_EQ(PlainLine("\v\f\x7f\xc2\x9f\xc2\xa0"), "??\xc2\xa0");
    EXPECT_EQ(PlainLine(std::string(199, 'a') + "\xc3\xa4"), std::string(199, 'a'));
    EXPECT_EQ(PlainLine(std::string(198, 'a') + "\xc3\xa4z"), std::string(198, 'a') + "\xc3\xa4");
}

TEST(MachineText, AFileOfEightMegabytesIsRead)
{
    const TempFolder folder;
    const SystemTree tree(folder.Path());
    for (const size_t size : { 0, 1, 16385, 8 << 20, (8 << 20) + 1 }) {
        WriteFile(folder / "file", std::string(size, 'x'));
        EXPECT_EQ(tree.Text("/file").value_or("").size(), size > 8 << 20 ? 0 : size);
    }
    EXPECT_EQ(tree.Text("/file"), std::nullopt);
    EXPECT_EQ(SystemTree("").Text("/proc/self/mem"), std::nullopt);
    EXPECT_EQ(tree.Text("/"), std::nullopt);
    EXPECT_TRUE(tree.Has("/file") && !tree.Has("/none") && !tree.Names("/file"));
    EXPECT_EQ(WholeNumber<int>("7 x"), std::nullopt);
}
