#include "sysinfo/LibSysInfo.h"

#include "tests/support/Printed.h"
#include "tests/support/Test.h"

namespace {

system_info PentiumPair()
{
    system_info info {};
    info.cpu_count = 2;
    info.cpu_revision = 7;
    info.cpu_type = B_CPU_INTEL_PENTIUM_II_MODEL_3;
    info.cpu_clock_speed = 400'910'000;
    info.bus_clock_speed = 100'300'000;
    info.platform_type = B_AT_CLONE_PLATFORM;
    info.max_pages = 32768;
    strcpy(info.kernel_build_date, "Nov 21 1999");
    strcpy(info.kernel_build_time, "12:00:01");
    return info;
}

} // namespace

TEST(LibSysInfo, RoundsAHalfDownCountsMemoryInThirtyTwoBitsAndNamesNoUnknownNumber)
{
    EXPECT_EQ(LibRoundedMHz(266'500'001), 267);
    EXPECT_EQ(LibRoundedMHz(266'500'000), 266);
    EXPECT_EQ(LibMemoryMB(32767), 127);
    EXPECT_EQ(LibMemoryMB(524287), 2047);
    EXPECT_EQ(LibMemoryMB(524288), -2048);
    EXPECT_EQ(std::string(LibProcessorName(6)) + LibPlatformName(14), "UnknownUnknown");
}

TEST(LibSysInfo, DescribesAMachineInOneLine)
{
    const LibSysInfo machine(PentiumPair(), BRect(0, 0, 1023, 767), B_CMAP8);
    EXPECT_STREQ(machine.kernelBuild, "Nov 21 1999, 12:00:01");
    const char* depth = machine.ScreenDepthStr(); // which another thread may ask for meanwhile
    EXPECT_STREQ(LibSysInfo(PentiumPair(), BRect(), B_RGB32).ScreenDepthStr(), "32 bit color");
    EXPECT_STREQ(depth, "8 bit color");
    EXPECT_EQ(Printed(machine),
        "AT Clone (2-Intel Pentium II@401/100MHz) 128MB RAM\n8 bit color, 1024x768\n");
    LibSysInfo copy(system_info {}, BRect(0, 0, 639, 479), B_RGB32);
    copy = machine; // but for the screen's size
    EXPECT_EQ(Printed(copy),
        "AT Clone (2-Intel Pentium II@401/100MHz) 128MB RAM\n8 bit color, 640x480\n");
    EXPECT_STREQ(copy.kernelBuild, "Nov 21 1999, 12:00:01");
    EXPECT_EQ(copy.cpuRevision, 7);
}
