#include "sysinfo/LibSysInfo.h"

#include <cmath>
#include <cstdio>

#include <Screen.h>

#include "sysinfo/MachineNames.h"

namespace {

system_info SystemInfo()
{
    system_info info {};
    get_system_info(&info);
    return info;
}

// The screen's frame counts larger units where the desktop shows everything larger.
BRect PixelFrame(const BScreen& screen)
{
    display_mode mode {};
    screen.GetMode(&mode); // without a screen: no pixels
    return BRect(0, 0, float(mode.virtual_width) - 1, float(mode.virtual_height) - 1);
}

int32 PixelsBetween(float first, float last)
{
    return static_cast<int32>(std::ceil(last - first)) + 1;
}

} // namespace

LibSysInfo::LibSysInfo() : LibSysInfo(SystemInfo(), BScreen(B_MAIN_SCREEN_ID)) { }

LibSysInfo::LibSysInfo(const system_info& info, const BScreen& screen)
    : LibSysInfo(info, PixelFrame(screen), screen.ColorSpace())
{
}

LibSysInfo::LibSysInfo(const system_info& info, const BRect& screenFrame, const color_space& depth)
    : colorSpace(depth), cpuCount(info.cpu_count), cpuType(LibProcessorName(info.cpu_type)),
      platform(LibPlatformName(info.platform_type)),
      screenWidth(PixelsBetween(screenFrame.left, screenFrame.right)),
      screenHeight(PixelsBetween(screenFrame.top, screenFrame.bottom)),
      cpuRevision(info.cpu_revision), cpuClockMHz(LibRoundedMHz(info.cpu_clock_speed)),
      busClockMHz(LibRoundedMHz(info.bus_clock_speed)), memoryMB(LibMemoryMB(info.max_pages))
{
    kernelBuild.Formatted("%s, %s", info.kernel_build_date, info.kernel_build_time);
}

LibSysInfo& LibSysInfo::operator=(const LibSysInfo& o)
{
    colorSpace = o.colorSpace;
    cpuCount = o.cpuCount;
    cpuType = o.cpuType;
    platform = o.platform;
    cpuRevision = o.cpuRevision;
    cpuClockMHz = o.cpuClockMHz;
    busClockMHz = o.busClockMHz;
    kernelBuild = o.kernelBuild;
    memoryMB = o.memoryMB;
    return *this;
}

void LibSysInfo::Description(LibString& out) const
{
    const char* platformName = platform;
    const char* processorName = cpuType;
    out.Formatted("%s (%d-%s@%d/%dMHz) %dMB RAM", platformName, cpuCount, processorName,
        cpuClockMHz, busClockMHz, memoryMB);
}

const char* LibSysInfo::ScreenDepthStr() const
{
    return LibColorDepthName(colorSpace);
}

void LibSysInfo::PrintToStream() const
{
    LibString description;
    Description(description);
    const char* text = description;
    fprintf(stderr, "%s\n", text);
    fprintf(stderr, "%s, %dx%d\n", ScreenDepthStr(), screenWidth, screenHeight);
}

int32 LibRoundedMHz(const int64& hz)
{
    return static_cast<int32>(hz / 1'000'000 + (hz % 1'000'000 > 500'000 ? 1 : 0));
}

int32 LibMemoryMB(const int32& pages)
{
    const auto bytes = static_cast<int32>(static_cast<uint32>(pages) * B_PAGE_SIZE);
    return bytes / 1'048'576;
}
