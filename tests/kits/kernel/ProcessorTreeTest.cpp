#include "MachineTree.h"
#include "tests/support/WaitUntil.h"

#include <OS.h>

namespace {
struct Row {
    int number;
    const char* siblings;
    const char* online = nullptr; // its switch
    int maxMegaHertz = 0;
    int capacity = 0;
};

std::string SwitchFile(int number)
{
    return "sys/devices/system/cpu/cpu" + std::to_string(number) + "/online";
}

void WriteProcessors(const MachineTree& tree, const std::vector<Row>& rows)
{
    for (const Row& row : rows) {
        const std::string folder = "sys/devices/system/cpu/cpu" + std::to_string(row.number) + "/";
        tree.Write(folder + "topology/thread_siblings_list", std::string(row.siblings) + "\n");
        if (row.online)
            tree.Write(folder + "online", std::string(row.online) + "\n");
        if (row.maxMegaHertz)
            tree.Write(
                folder + "cpufreq/cpuinfo_max_freq", std::to_string(row.maxMegaHertz) + "000\n");
        if (row.capacity)
            tree.Write(folder + "cpu_capacity", std::to_string(row.capacity) + "\n");
    }
}

std::vector<Row> ManyProcessors(int count)
{
    std::vector<Row> rows;
    for (int number = 0; number < count; number++)
        rows.push_back({ number, "", number ? "1" : nullptr });
    return rows;
}

// Two processors, the second one off before, and one that the program may switch.
const std::vector<Row> kOneOffInTheMiddle = { { 0, "0" }, { 1, "1", "0" }, { 2, "2", "1" } };
} // namespace

TEST(ProcessorTree, EightAtMostInTheOrderOfTheirWorth)
{
    const std::tuple<const char*, std::vector<Row>, std::vector<int>> cases[] = {
        { "siblings in pairs",
            { { 0, "0-1" }, { 1, "0-1", "1" }, { 2, "2-3", "1" }, { 3, "2-3", "1" } },
            { 0, 2, 1, 3 } },
        { "slow cores first, by clock",
            { { 0, "0", nullptr, 2000 }, { 1, "1", "1", 2000 }, { 2, "2-3", "1", 4000 },
                { 3, "2-3", "1", 4000 } },
            { 0, 2, 1, 3 } },
        { "slow cores first, by capacity",
            { { 0, "0", nullptr, 3000, 500 }, { 1, "1", "1", 3000, 500 },
                { 2, "2", "1", 3000, 1024 } },
            { 0, 2, 1 } },
        { "one off in the middle", kOneOffInTheMiddle, { 0, 2 } },
        { "a sibling that is off",
            { { 0, "0,3", "0" }, { 1, "1-2", "1" }, { 2, "1-2", "1" }, { 3, "0,3", "1" } },
            { 1, 3, 2 } },
        { "no processor 0, one without a switch", { { 4, "4", "1" }, { 5, "5" }, { 6, "6", "1" } },
            { 5, 4, 6 } },
        { "a hundred", ManyProcessors(100), { 0, 1, 2, 3, 4, 5, 6, 7 } },
    };
    for (const auto& [name, rows, numbers] : cases) {
        SCOPED_TRACE(name);
        const MachineTree tree;
        WriteProcessors(tree, rows);
        EXPECT_EQ(kernel::Processors(tree.Path()).Numbers(), numbers);
    }
}

TEST(ProcessorTree, SwitchingReachesTheRightOneAndTheCountStays)
{
    const MachineTree tree;
    WriteProcessors(
        tree, { { 0, "0,4", "1" }, { 1, "1,5", "1" }, { 4, "0,4", "1" }, { 5, "1,5", "1" } });
    const RootGuard root(tree.Path());
    const auto states = [&] {
        std::string all;
        for (const int number : { 0, 1, 4, 5 })
            all += tree.Read(SwitchFile(number)).substr(0, 1);
        return all;
    };
    const std::tuple<int32, int32, status_t, const char*> steps[] = {
        // Processor, new state, status, and the states of the system's 0, 1, 4, 5.
        { 3, 0, B_OK, "1110" },
        { 1, 0, B_OK, "1010" },
        { 0, 0, B_NOT_ALLOWED, "1010" },
        { 4, 0, B_BAD_VALUE, "1010" },
        { -1, 0, B_BAD_VALUE, "1010" },
        { 3, 1, B_OK, "1011" },
        { 1, 1, B_OK, "1111" },
    };
    for (const auto& [cpu, state, status, expected] : steps) {
        EXPECT_EQ(_kset_cpu_state_(cpu, state), status) << cpu << state;
        EXPECT_EQ(states(), expected) << cpu << state;
        system_info info;
        ASSERT_EQ(get_system_info(&info), B_OK);
        EXPECT_EQ(info.cpu_count, 4);
    }
}

TEST(ProcessorTree, WhatIsOffComesOnAtTheEndButNotWhatWasOffBefore)
{
    const MachineTree tree;
    WriteProcessors(tree, kOneOffInTheMiddle);
    {
        kernel::Processors processors(tree.Path());
        ASSERT_EQ(processors.Switch(1, false), B_OK);
        ASSERT_EQ(tree.Read(SwitchFile(2)), "0\n");
    }
    EXPECT_TRUE(WaitUntil([&] { return tree.Read(SwitchFile(2)) == "1\n"; }));
    EXPECT_EQ(tree.Read(SwitchFile(1)), "0\n");
    std::filesystem::remove(tree / SwitchFile(2));
    testing::internal::CaptureStderr();
    EXPECT_EQ(kernel::Processors(tree.Path()).Switch(1, false), B_ERROR);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "Error switching processor <2> off: No such file or directory\n");
}

TEST(ProcessorTree, SystemInfoOfAMachineThatTellsAllAndOfOneThatTellsAlmostNothing)
{
    const ThisMachine tree;
    system_info info;
    const auto read = [&] { EXPECT_EQ(get_system_info(&info), B_OK); };
    tree.Write(
        "proc/meminfo", "MemTotal: 4096 kB\nMemFree: 1024 kB\nBuffers: 512 kB\nCached: 512 kB\n");
    tree.Write("proc/stat", // more microseconds than there are numbers
        "cpu0 9223372036854775807 1 1 1 1 1 1\nbtime 9999999999999999\n");
    read();
    EXPECT_EQ(std::tuple(info.cpu_count, info.cpu_type, info.used_pages, info.platform_type,
                  info.boot_time, info.cpu_infos[0].active_time),
        std::tuple(1, B_CPU_X86, 512, B_AT_CLONE_PLATFORM, bigtime_t { 1000000 } << 43,
            10000 * ((1LL << 40) + 4)));

    WriteProcessors(tree, kOneOffInTheMiddle);
    tree.Write("proc/cpuinfo",
        "processor\t: 0\nvendor_id\t: AuthenticAMD\ncpu family\t: 5\nmodel\t\t: 8\n"
        "model name\t: AMD-K6(tm) 3D processor\nstepping\t: 12\ncpu MHz\t\t: 451.032\n\n"
        "processor\t: 2\nstepping\t: 1\n");
    tree.Write("proc/stat",
        "cpu  1 2 3 4\ncpu0 100 20 3 999 999 4 5 999 9 9\ncpu2 1 0 0 5\n"
        "intr 5\nctxt 7\nbtime 1700557792\n");
    tree.Write("proc/meminfo", "MemTotal: 131072 kB\nMemFree: 1 kB\nMemAvailable: 65536 kB\n");
    kernel::Processors::SetRoot(tree.Path()); // which looks anew
    read();
    EXPECT_EQ(std::tuple(info.cpu_count, info.cpu_type, info.cpu_revision, info.cpu_clock_speed),
        std::tuple(2, B_CPU_AMD_K6_MODEL8, 12, 451032000));
    EXPECT_EQ(std::tuple(info.cpu_infos[0].active_time, info.cpu_infos[1].active_time,
                  info.max_pages, info.used_pages, info.boot_time),
        std::tuple(1320000, 10000, 32768, 16384, 1700557792000000));
}

TEST(ProcessorTree, ProcessorsOfOtherKindsTellTheirOwnWords)
{
    const std::tuple<const char*, int, int, int, int64> rows[] = {
        // Arm tells no clock; where no governor does either, there is none.
        { "processor\t: 0\nBogoMIPS\t: 108.00\nFeatures\t: fp asimd\nCPU implementer\t: 0x41\n"
          "CPU architecture: 8\nCPU variant\t: 0x0\nCPU part\t: 0xd08\nCPU revision\t: 3\n\n",
            1800, B_CPU_ARM, 3, 1800000000 },
        { "processor\t: 0\nBogoMIPS\t: 243.75\nCPU implementer\t: 0x41\nCPU revision\t: 1\n", 0,
            B_CPU_ARM, 1, 0 },
        { "processor\t: 0\ncpu\t\t: POWER9 (architected), altivec supported\n"
          "clock\t\t: 3800.000000MHz\nrevision\t: 2.2 (pvr 004e 0202)\n\n"
          "timebase\t: 512000000\nplatform\t: pSeries\nmodel\t\t: IBM,9009-42A\n",
            0, 0, 2, 3800000000 },
        { "vendor_id       : IBM/S390\n# processors    : 1\nfacilities      : 0 1 2\n"
          "processor 0: version = 00,  identification = 0A1B2C,  machine = 8561\n\n"
          "cpu number      : 0\ncpu MHz dynamic : 4900\ncpu MHz static  : 5200\n",
            0, 0, 0, 5200000000 },
        { "processor\t: 0\nhart\t\t: 0\nisa\t\t: rv64imafdc\n", 0, 0, 0, 0 },
    };
    for (const auto& [cpuInfo, maxMegaHertz, type, revision, clock] : rows) {
        SCOPED_TRACE(cpuInfo);
        const MachineTree tree;
        tree.Write("proc/cpuinfo", cpuInfo);
        WriteProcessors(tree, { { 0, "0", nullptr, maxMegaHertz } });
        const RootGuard root(tree.Path());
        system_info info;
        EXPECT_EQ(get_system_info(&info), B_OK);
        EXPECT_EQ(
            std::tuple(info.cpu_count, info.cpu_type, info.cpu_revision, info.cpu_clock_speed),
            std::tuple(1, type, revision, clock));
    }
}
