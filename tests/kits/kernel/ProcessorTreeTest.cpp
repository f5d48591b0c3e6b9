#include "MachineTree.h"
#include "tests/support/Rows.h"
#include "tests/support/WaitUntil.h"

#include <OS.h>

#include <regex>

namespace {
std::string SwitchFile(int number)
{
    return "sys/devices/system/cpu/cpu" + std::to_string(number) + "/online";
}

// Of each processor its number, its siblings and its switch, if it has one, then maybe its clock in
// MHz and its capacity: "0[0-1] 1[0-1]on@2000*500".
void WriteProcessors(const MachineTree& tree, const std::string& processors)
{
    static const std::regex kForm(R"((\d+)\[(\S*)\](on|off)?(?:@(\d+))?(?:\*(\d+))?)");
    for (std::sregex_iterator at(processors.begin(), processors.end(), kForm), end; at != end;
         ++at) {
        const std::smatch& match = *at;
        const std::string folder = "sys/devices/system/cpu/cpu" + match.str(1) + "/";
        tree.Write(folder + "topology/thread_siblings_list", match.str(2) + "\n");
        if (match[3].matched)
            tree.Write(folder + "online", match.str(3) == "on" ? "1\n" : "0\n");
        if (match[4].matched)
            tree.Write(folder + "cpufreq/cpuinfo_max_freq", match.str(4) + "000\n");
        if (match[5].matched)
            tree.Write(folder + "cpu_capacity", match.str(5) + "\n");
    }
}

// The second one off before, and one that the program may switch.
constexpr char kOneOffInTheMiddle[] = "0[0] 1[1]off 2[2]on";
} // namespace

TEST(ProcessorTree, EightAtMostInTheOrderOfTheirWorth)
{
    for (const Row& row : RowsOf("kits/kernel/data/processors.txt", 5)) {
        SCOPED_TRACE(row[0]);
        const MachineTree tree;
        WriteProcessors(tree, row[1]);
        if (!row[2].empty())
            tree.Write("sys/devices/system/cpu/online", row[2]);
        tree.Write("proc/cpuinfo", row[3]);
        const kernel::Processors processors(tree.Path());
        std::string numbers;
        for (const int number : processors.Numbers())
            numbers += (numbers.empty() ? "" : " ") + std::to_string(number);
        EXPECT_EQ(numbers, row[4]);
    }
}

TEST(ProcessorTree, SwitchingReachesTheRightOneAndTheCountStays)
{
    const MachineTree tree;
    WriteProcessors(tree, "0[0,4]on 1[1,5]on 4[0,4]on 5[1,5]on");
    const RootGuard root(tree.Path());
    const auto states = [&] {
        std::string all;
        for (const int number : { 0, 1, 4, 5 })
            all += tree.Read(SwitchFile(number)).substr(0, 1);
        return all;
    };
    const std::map<std::string, status_t> statuses = { { "fine", B_OK },
        { "bad value", B_BAD_VALUE }, { "not allowed", B_NOT_ALLOWED } };
    for (const Row& row : RowsOf("kits/kernel/data/switches.txt", 4)) {
        EXPECT_EQ(_kset_cpu_state_(std::stoi(row[0]), std::stoi(row[1])), statuses.at(row[2]));
        EXPECT_EQ(states(), row[3]) << row[0] << row[1];
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
    EXPECT_EQ(get_system_info(nullptr), B_BAD_VALUE);
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
    tree.Write("proc/version", "Linux version 6.1.0-with-a-long-name-of-its-own (2023-09-29)\n");
    kernel::Processors::SetRoot(tree.Path()); // which looks anew
    read();
    EXPECT_EQ(std::tuple(info.cpu_count, info.cpu_type, info.cpu_revision, info.cpu_clock_speed),
        std::tuple(2, B_CPU_AMD_K6_MODEL8, 12, 451032000));
    EXPECT_EQ(std::tuple(info.cpu_infos[0].active_time, info.cpu_infos[1].active_time,
                  info.max_pages, info.used_pages, info.boot_time),
        std::tuple(1320000, 10000, 32768, 16384, 1700557792000000));
    EXPECT_EQ(std::tuple(std::string(info.kernel_name), std::string(info.kernel_build_date),
                  std::string(info.kernel_build_time)),
        std::tuple("Linux 6.1.0-with-a-long-name-of-its-own", "Sep 29 2023", ""));
}

TEST(ProcessorTree, ProcessorsOfOtherKindsTellTheirOwnWords)
{
    for (const Row& row : RowsOf("kits/kernel/data/other-processors.txt", 5)) {
        SCOPED_TRACE(row[0]);
        const MachineTree tree;
        tree.Write("proc/cpuinfo", row[0]);
        WriteProcessors(tree, row[1]);
        const RootGuard root(tree.Path());
        system_info info;
        EXPECT_EQ(get_system_info(&info), B_OK);
        EXPECT_EQ(std::tuple(info.cpu_count, info.cpu_type, std::to_string(info.cpu_revision),
                      std::to_string(info.cpu_clock_speed)),
            std::tuple(1,
                row[2] == "Arm"       ? B_CPU_ARM
                    : row[2] == "x86" ? B_CPU_X86
                                      : 0,
                row[3], row[4]));
    }
}
