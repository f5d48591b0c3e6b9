#include "MachineTree.h"
#include "SystemTree.h"
#include "tests/support/Rows.h"

#include <MachineState.h>
#include <OS.h>

#include <sstream>

namespace {
std::string Text(const std::vector<int>& numbers)
{
    std::string text;
    for (const int number : numbers)
        text += (text.empty() ? "" : " ") + std::to_string(number);
    return text;
}

std::optional<uint64> CoreThrottles(const MachineState& state)
{
    std::optional<uint64> sum;
    for (const ProcessorTimes& processor : state.processors) {
        if (processor.coreThrottles)
            sum = sum.value_or(0) + *processor.coreThrottles;
    }
    return sum;
}
} // namespace

TEST(MachineDetails, OfRealMachines)
{
    for (const Row& row : RowsOf("kits/kernel/data/captures.txt", 11)) {
        SCOPED_TRACE(row[0]);
        const MachineTree tree;
        if (!tree.Unpack(row[0],
                "--exclude='*/cache' --exclude='*/cpuidle' --exclude='*/stats' --exclude='*/pci*' "
                "'*/proc/*' '*/sys/[cd]*'"))
            GTEST_SKIP() << "no captured machine <" << row[0] << ">";
        const RootGuard root(tree.Path());
        system_info info;
        ASSERT_EQ(get_system_info(&info), B_OK);
        EXPECT_GT(info.cpu_infos[0].active_time, 0);
        EXPECT_GT(info.boot_time, 1200000000000000);
        const MachineDetails details = ReadMachineDetails();
        const size_t described = std::stoul(row[6]);
        ASSERT_GT(details.processors.size(), described);
        const ProcessorDetails& one = details.processors[described];
        std::ostringstream type;
        type << std::hex << info.cpu_type;
        EXPECT_EQ((Row { row[0], Text(kernel::Processors::Get()->Numbers()), type.str(),
                      std::to_string(info.cpu_clock_speed) + " " + std::to_string(info.max_pages),
                      Text(details.processorModel), Text(details.memory), row[6],
                      Text(one.package) + " " + Text(one.core) + ": " + Text(one.siblings),
                      Text(one.highestClock) + " " + Text(one.upperLimit),
                      Text(CommonText(details, &ProcessorDetails::governor)),
                      Text(CoreThrottles(ReadMachineState())) }),
            row);
        EXPECT_TRUE(details.virtualMachine == "none" && !one.kind);
    }
}

TEST(MachineDetails, LinesAreFitForARecord)
{
    EXPECT_EQ(kernel::PlainLine("  a\tb \x01\xff\xc3\xa4\r\nnext"), "a b ??\xc3\xa4");
    EXPECT_EQ(kernel::PlainLine(std::string(199, 'a') + "\xc3\xa4"), std::string(199, 'a'));
}

TEST(MachineDetails, TextsOfOtherSystemsAreUnderstood)
{
    for (const Row& row : RowsOf("kits/kernel/data/system-texts.txt", 4)) {
        SCOPED_TRACE(row[1]);
        const ThisMachine tree;
        tree.Write(row[0], row[1]);
        const MachineDetails details = ReadMachineDetails();
        const ProcessorDetails& first = details.processors[0];
        const std::map<std::string, std::string> found = { { "distribution",
                                                               Text(details.distribution) },
            { "model", Text(details.processorModel) }, { "virtual", Text(details.virtualMachine) },
            { "container", Text(details.container) }, { "release", Text(details.kernelRelease) },
            { "version", Text(details.kernelVersion) }, { "memory", Text(details.memory) },
            { "core", Text(first.core) }, { "clock", Text(first.lowerLimit) },
            { "siblings", Text(first.siblings) } };
        EXPECT_EQ(found.at(row[2]), row[3]) << row[2];
    }
    for (const Row& row : RowsOf("kits/kernel/data/virtual-machines.txt", 3)) {
        const ThisMachine tree;
        tree.Write("proc/cpuinfo", "processor: 0\nflags\t\t: " + row[0] + "\n");
        tree.Write("sys/class/dmi/id/product_name", row[1]);
        EXPECT_EQ(ReadMachineDetails().virtualMachine, row[2]) << row[0] << " " << row[1];
    }
}
