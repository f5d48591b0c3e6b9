#include "MachineTree.h"
#include "tests/support/Rows.h"

#include <OS.h>

namespace {
std::string SwitchFile(int number)
{
    return "sys/devices/system/cpu/cpu" + std::to_string(number) + "/online";
}
} // namespace

TEST(ProcessorTree, SwitchingReachesTheRightOneAndTheCountStays)
{
    const MachineTree tree;
    for (const int number : { 0, 1, 4, 5 })
        tree.Write(SwitchFile(number), "1");
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
    EXPECT_EQ(get_system_info(nullptr), B_BAD_VALUE);
}
