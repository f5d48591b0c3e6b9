#include "MachineTree.h"

#include <OS.h>

namespace {
const std::vector<int> kFirstEight = { 0, 1, 2, 3, 4, 5, 6, 7 };

const struct {
    const char* name;
    std::vector<int> numbers;
    cpu_type type;
    int64 clock;
    int32 pages;
} kCaptures[] = {
    { "2i386-2c-nohugepage", { 0, 1 }, B_CPU_INTEL_X86, 2000000000, 518857 },
    { "8em64t-2s4c-asymcaches", kFirstEight, B_CPU_INTEL_X86, 2330000000, 524287 },
    // 2, 5, 13 and 14 are off; 8 shares a core with 0.
    { "16em64t-4s2c2t-offlines", { 0, 1, 3, 4, 6, 7, 10, 8 }, B_CPU_INTEL_X86, 2600000000, 0 },
    // Two of the six fast cores have a higher clock, 12 and 13 are slow.
    { "20em64t-hybrid-1p6c2t+2ca4co1t", { 0, 4, 8, 2, 6, 10, 12, 13 }, B_CPU_INTEL_X86, 5200000000,
        524287 },
    { "48amd64-4pa2n6c-sparse", kFirstEight, B_CPU_AMD_X86, 1700000000, 524287 },
    // Two processors share a core.
    { "64amd64-4s2n4ca2co", { 0, 2, 4, 6, 8, 10, 12, 14 }, B_CPU_AMD_X86, 2300161000, 524287 },
    { "40intel64-2g2n4c+pcilocality", kFirstEight, B_CPU_INTEL_X86, 2400000000, 524287 },
};
} // namespace

TEST(Capture, RealMachinesAreDescribed)
{
    for (const auto& capture : kCaptures) {
        SCOPED_TRACE(capture.name);
        const MachineTree tree;
        if (!tree.Unpack(capture.name,
                "--exclude='*/cache' --exclude='*/cpuidle' --exclude='*/cpufreq/[abrs]*' "
                "--exclude='*/core_*' '*/proc/*' '*/sys/devices/system/cpu/*'"))
            GTEST_SKIP() << "no captured machine <" << capture.name << ">";
        const RootGuard root(tree.Path());
        EXPECT_EQ(kernel::Processors::Get()->Numbers(), capture.numbers);
        system_info info;
        ASSERT_EQ(get_system_info(&info), B_OK);
        EXPECT_EQ(info.cpu_count, static_cast<int32>(capture.numbers.size()));
        EXPECT_EQ(info.cpu_type, capture.type);
        EXPECT_EQ(info.cpu_clock_speed, capture.clock);
        EXPECT_EQ(info.max_pages, capture.pages);
        EXPECT_GT(info.cpu_infos[0].active_time, 0);
        EXPECT_GT(info.boot_time, 1200000000000000);
    }
}
