#include "CpuTopology.h"
#include "MachineFacts.h"
#include "TaskStat.h"
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
    const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
        { "Linux version 6.1.0-13-amd64 (a@b) (gcc 12) #1 SMP PREEMPT_DYNAMIC Debian 6.1.55-1 "
          "(2023-09-29)\n",
            "Linux 6.1.0-13-amd64", "Sep 29 2023", "" },
        { "Linux version 5.15.0 (x) (gcc) #1 SMP Sun Feb 4 01:02:03 CET 2024", "Linux 5.15.0",
            "Feb  4 2024", "01:02:03" },
        { "Linux version 6.18.44 (y) #1 SMP PREEMPT_DYNAMIC @0", "Linux 6.18.44", "", "" },
        { "Linux version 6 (2024-13-01)", "Linux 6", "", "" },
    };
    for (const auto& [text, name, date, time] : rows) {
        const KernelVersion version = ParseKernelVersion(text);
        EXPECT_EQ(version.name, name);
        EXPECT_EQ(version.buildDate, date);
        EXPECT_EQ(version.buildTime, time);
    }
}

TEST(MachineText, ATasksRecordIsReadWhateverItsName)
{
    TaskStat stat;
    EXPECT_TRUE(ParseTaskStat("12 (a) S (b) R 1 2 3 4 5 6 7 8 9 10 250 50 0\n", stat));
    EXPECT_EQ(stat.state, 'R');
    EXPECT_EQ(stat.userTime, 2500000);
    EXPECT_EQ(stat.kernelTime, 500000);
    EXPECT_FALSE(ParseTaskStat("12 (cut) R 1 2", stat));
    EXPECT_FALSE(ParseTaskStat("", stat));
}
