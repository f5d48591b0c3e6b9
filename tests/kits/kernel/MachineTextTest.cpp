#include "CpuTopology.h"
#include "MachineFacts.h"
#include "SystemTree.h"
#include "TaskStat.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

using namespace kernel;

TEST(MachineText, ListsAndMasksOfProcessors)
{
    using Numbers = std::vector<int>;
    EXPECT_EQ(ParseCpuList("0-2,8\n"), (Numbers { 0, 1, 2, 8 }));
    EXPECT_EQ(ParseCpuList("3,x,5-,7-4,-1,9"), (Numbers { 3, 9 }));
    for (const char* nothing : { "", "\n", "99999", "0-99999999" })
        EXPECT_EQ(ParseCpuList(nothing), Numbers()) << nothing;
    EXPECT_EQ(ParseCpuMask("00000001,80000101\n"), (Numbers { 0, 8, 31, 32 }));
    EXPECT_EQ(ParseCpuMask("00005"), (Numbers { 0, 2 }));
    EXPECT_EQ(ParseCpuList("8191,8192"), Numbers { 8191 });
    std::string words;
    for (int i = 0; i < 258; i++) // of which the first two are beyond
        words += (i > 0 ? "," : "") + std::string(i == 2 ? "80000000" : i == 1 ? "1" : "0");
    EXPECT_EQ(ParseCpuMask(words), Numbers { 8191 });
}

TEST(MachineText, ClocksAreTakenFromTheModelsName)
{
    for (const Row& row : RowsOf("kits/kernel/data/clocks.txt", 2))
        EXPECT_EQ(std::to_string(ClockInModelName(row[0])), row[1]) << row[0];
}

TEST(MachineText, ProcessorsAreNamedByMakerFamilyAndModel)
{
    const std::tuple<const char*, int, int, int> rows[] = {
        { "GenuineIntel", 5, 4, 0x1054 },
        { "GenuineIntel", 6, 240, B_CPU_INTEL_X86 }, // 0x1000 + 0x60 + 240 is a K5
        { "AuthenticAMD", 5, 9, 0x1159 },
        { "AuthenticAMD", 26, 2, B_CPU_AMD_X86 },
        { "CentaurHauls", 6, 15, B_CPU_X86 },
        { "RiseRiseRise", 5, 0, 0x1450 },
    };
    for (const auto& [vendor, family, model, type] : rows) {
        CpuTopology topology;
        topology.vendor = vendor;
        topology.family = family;
        topology.model = model;
        EXPECT_EQ(CpuTypeOf(topology), type) << vendor << family << " " << model;
    }
}

TEST(MachineText, BuildDateAndTimeOfTheKernel)
{
    for (const Row& row : RowsOf("kits/kernel/data/kernels.txt", 4)) {
        const KernelVersion version = ParseKernelVersion(row[0]);
        EXPECT_EQ((Row { row[0], version.name, version.buildDate, version.buildTime }), row);
    }
}

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
