#include "sysinfo/LibSysInfo.h"

#include "foundation/LibPath.h"
#include "foundation/LibTools.h"
#include "foundation/PlainText.h"

#include <AppFileInfo.h>
#include <File.h>
#include <FindDirectory.h>
#include <MachineDetails.h>
#include <OS.h>
#include <Path.h>
#include <Screen.h>

#include <cmath>
#include <cstdio>

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
    return BRect(0, 0, static_cast<float>(mode.virtual_width) - 1,
        static_cast<float>(mode.virtual_height) - 1);
}

int32 PixelsBetween(float first, float last)
{
    // Both edges are pixels themselves: from 0 to 639 there are 640.
    return static_cast<int32>(std::ceil(last - first)) + 1;
}

struct CodeName {
    int32 code;
    const char* name;
};

constexpr CodeName kProcessors[] = {
    { B_CPU_PPC_601, "601" },
    { B_CPU_PPC_603, "603" },
    { B_CPU_PPC_603e, "603e" },
    { B_CPU_PPC_604, "604" },
    { B_CPU_PPC_604e, "604e" },
    { B_CPU_PPC_686, "686" },
    { B_CPU_AMD_29K, "AMD 29K" },
    { B_CPU_X86, "x86" },
    { B_CPU_MC6502, "MC6502" },
    { B_CPU_Z80, "Z80" },
    { B_CPU_ALPHA, "Alpha" },
    { B_CPU_MIPS, "Mips" },
    { B_CPU_HPPA, "Hppa" },
    { B_CPU_M68K, "M68K" },
    { B_CPU_ARM, "Arm" },
    { B_CPU_SH, "SH" },
    { B_CPU_SPARC, "Sparc" },
    { B_CPU_INTEL_X86, "Intel x86" },
    { B_CPU_INTEL_PENTIUM, "Intel Pentium" },
    { B_CPU_INTEL_PENTIUM75, "Intel Pentium 75" },
    { B_CPU_INTEL_PENTIUM_486_OVERDRIVE, "Intel Pentium 486" },
    { B_CPU_INTEL_PENTIUM_MMX, "Intel Pentium MMX" },
    { B_CPU_INTEL_PENTIUM_MMX_MODEL_8, "Intel Pentium MMX Model 8" },
    { B_CPU_INTEL_PENTIUM75_486_OVERDRIVE, "Intel Pentium 75-486" },
    { B_CPU_INTEL_PENTIUM_PRO, "Intel Pentium Pro" },
    { B_CPU_INTEL_PENTIUM_II_MODEL_3, "Intel Pentium II" },
    { B_CPU_INTEL_PENTIUM_II_MODEL_5, "Intel Pentium II m5" },
    { B_CPU_INTEL_CELERON, "Intel Pentium Celeron" },
    { B_CPU_INTEL_PENTIUM_III, "Intel Pentium III" },
    { B_CPU_AMD_X86, "AMD x86" },
    { B_CPU_AMD_K5_MODEL0, "AMD K5 m0" },
    { B_CPU_AMD_K5_MODEL1, "AMD K5 m1" },
    { B_CPU_AMD_K5_MODEL2, "AMD K5 m2" },
    { B_CPU_AMD_K5_MODEL3, "AMD K5 m3" },
    { B_CPU_AMD_K6_MODEL6, "AMD K6 m6" },
    { B_CPU_AMD_K6_MODEL7, "AMD K6 m7" },
    { B_CPU_AMD_K6_MODEL8, "AMD K6 m8" },
    { B_CPU_AMD_K6_MODEL9, "AMD K6 m9" },
    { B_CPU_CYRIX_X86, "Cyrix x86" },
    { B_CPU_CYRIX_GXm, "Cyrix GXm" },
    { B_CPU_CYRIX_6x86MX, "Cyrix 6 x86MX" },
    { B_CPU_IDT_WINCHIP_C6, "IDT WinChip C6" },
    { B_CPU_IDT_WINCHIP_2, "IDT WinChip 2" },
    { B_CPU_RISE_X86, "Rise x86" },
    { B_CPU_RISE_mP6, "Rise mP6" },
};

constexpr CodeName kPlatforms[] = {
    { B_BEBOX_PLATFORM, "BeBox" },
    { B_MAC_PLATFORM, "Mac" },
    { B_AT_CLONE_PLATFORM, "AT Clone" },
    { B_ENIAC_PLATFORM, "Eniac" },
    { B_APPLE_II_PLATFORM, "Apple II" },
    { B_CRAY_PLATFORM, "Cray" },
    { B_LISA_PLATFORM, "Lisa" },
    { B_TI_994A_PLATFORM, "TI 994A" },
    { B_TIMEX_SINCLAIR_PLATFORM, "Timex Sinclair" },
    { B_ORAC_1_PLATFORM, "Orac 1" },
    { B_HAL_PLATFORM, "Hal" },
    { B_BESM_6_PLATFORM, "Besm 6" },
    { B_MK_61_PLATFORM, "MK 61" },
    { B_NINTENDO_64_PLATFORM, "Nintendo 64" },
};

constexpr CodeName kColorDepths[] = {
    { B_NO_COLOR_SPACE, "No color" },
    { B_GRAY1, "1 bit gray" },
    { B_GRAY8, "8 bit gray" },
    { B_RGB24, "24 bit color" },
    { B_CMAP8, "8 bit color" },
    { B_RGB16, "16 bit color" },
    { B_RGB32, "32 bit color" },
    { B_RGB15, "15 bit color" },
};

template <size_t n>
const char* NameOf(const CodeName (&table)[n], int32 code)
{
    for (const CodeName& row : table) {
        if (row.code == code)
            return row.name;
    }
    return "Unknown";
}

} // namespace

const char* LibProcessorName(const int32& type)
{
    return NameOf(kProcessors, type);
}

const char* LibPlatformName(const int32& type)
{
    return NameOf(kPlatforms, type);
}

const char* LibColorDepthName(const color_space& space)
{
    return NameOf(kColorDepths, space);
}

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
    // Results are told apart by this line: a change in it makes another machine of every one.
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
    // Multiplied without a sign, as the overflow of a signed product is undefined: from 2 GB on the
    // result is wrong, but the same with every compiler.
    const auto bytes = static_cast<int32>(static_cast<uint32>(pages) * B_PAGE_SIZE);
    return bytes / 1'048'576;
}

std::string LibMachineText(const MachineDetails& details)
{
    std::string text = details.processorModel.value_or("");
    const auto add = [&text](
                         const std::string& line) { text += (text.empty() ? "" : "\n") + line; };
    if (const size_t all = details.processors.size(); all > B_MAX_CPU_COUNT)
        add(std::to_string(all) + " processors, of which windows measure with "
            + std::to_string(B_MAX_CPU_COUNT));
    if (details.memory) {
        const double gigabytes = static_cast<double>(*details.memory) / (1 << 30);
        add(LibFixedText(gigabytes, 1) + " GB of memory");
    }
    if (details.kernelRelease)
        add("Linux " + *details.kernelRelease);
    return text;
}

void LibGetOSVersion(LibString& version)
{
    // The version that people know is that of the file manager, which comes with each release.
    BFile tracker("/system/Tracker", B_READ_ONLY);
    version_info info;
    if (BAppFileInfo(&tracker).GetVersionInfo(&info, B_APP_VERSION_KIND) == B_OK)
        version = info.short_info;
}

void LibShutdown(bool restart)
{
    BPath tool;
    BPath apart; // where some systems keep the administrator's tools
    if (find_directory(B_BEOS_BIN_DIRECTORY, &tool) != B_OK || tool.Append("shutdown") != B_OK)
        return;
    if (!LibExists(tool.Path()) && find_directory(B_BEOS_SERVERS_DIRECTORY, &apart) == B_OK
        && apart.Append("shutdown") == B_OK && LibExists(apart.Path()))
        tool = apart;
    ToolCommand command(tool.Path());
    if (restart)
        command.Option("-r");
    // In the background: the tool waits for the programs that it ends, and this one is among them.
    [[maybe_unused]] const int started = command.Option("&").Run();
}
