// The machine and its operating system.
#pragma once

#include "foundation/LibString.h"

#include <GraphicsDefs.h>
#include <OS.h>
#include <Rect.h>

#include <string>

class BScreen;
struct MachineDetails;

// A snapshot of the machine: processors, clocks, memory and main screen as they were when it was
// made. What the platform does not tell is 0 or "Unknown".
class LibSysInfo {
public:
    // Describes this machine and its main screen; without a display the screen is 0 by 0.
    LibSysInfo();
    // Describes the machine that info tells of, with a screen of this frame and depth.
    LibSysInfo(const system_info& info, const BRect& screenFrame, const color_space& depth);
    LibSysInfo(const LibSysInfo&) = delete;
    virtual ~LibSysInfo() = default;
    // Takes over everything but screenWidth and screenHeight.
    LibSysInfo& operator=(const LibSysInfo& o);

    // The line that identifies a machine's results, as in
    // "AT Clone (2-Intel Pentium II@400/100MHz) 128MB RAM".
    void Description(LibString& out) const;
    // The screen's depth in words; valid for as long as the program runs, in every thread.
    const char* ScreenDepthStr() const;
    // Description, depth and screen size on standard error.
    void PrintToStream() const;

    color_space colorSpace;
    int32 cpuCount;
    LibString cpuType;
    LibString platform;
    int32 screenWidth; // pixels
    int32 screenHeight;
    int32 cpuRevision;
    int32 cpuClockMHz;
    int32 busClockMHz;
    LibString kernelBuild; // "date, time"
    int32 memoryMB;

private:
    LibSysInfo(const system_info& info, const BScreen& screen);
};

// hz in whole MHz; an exact half is rounded down.
[[nodiscard]] int32 LibRoundedMHz(const int64& hz);
// Pages of 4096 bytes in whole MB. The bytes are counted in 32 bits: 2 GB and more come out wrong.
[[nodiscard]] int32 LibMemoryMB(const int32& pages);

// The names of the platform's codes for processors, platforms and screen depths. Every function
// returns "Unknown" for a code that it does not know.

// The name of a system_info's cpu_type.
[[nodiscard]] const char* LibProcessorName(const int32& type);
// The name of a system_info's platform_type.
[[nodiscard]] const char* LibPlatformName(const int32& type);
// "8 bit color" and so on; the spaces with alpha have no name.
[[nodiscard]] const char* LibColorDepthName(const color_space& space);

// The operating system as a whole.

// The machine as other programs name it, a line each: the processors' model, how many there are
// where a run counts fewer, all of the memory and the kernel, as far as the system tells:
// "AMD EPYC 7763\n31.3 GB of memory\nLinux 6.1.0-13-amd64". The description of a run has limits and
// names of its own instead.
[[nodiscard]] std::string LibMachineText(const MachineDetails& details);
// Sets version to the operating system's own short version text. Leaves it as it was where the
// system does not say.
void LibGetOSVersion(LibString& version);
// Starts the system's shutdown tool, which ends or restarts the machine when and if it sees fit,
// and returns at once.
void LibShutdown(bool restart);
