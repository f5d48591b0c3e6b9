#include "ApplicationState.h"

#include "AppDefs.h"
#include "LeafLock.h"

#include <cstring>
#include <fstream>

namespace {

constexpr size_t kImageSize = sizeof(CursorState::image);

bool IsImage(const void* data)
{
    // 16 pixels wide and high, one bit each, and the point that points inside.
    const auto* bytes = static_cast<const uint8*>(data);
    return bytes && bytes[0] == 16 && bytes[1] == 1 && bytes[2] < 16 && bytes[3] < 16;
}

Mutex gLock;
CursorState gCursor GUARDED_BY(gLock);
void (*gCursorHook)() GUARDED_BY(gLock) = nullptr;
std::vector<std::string> gArguments GUARDED_BY(gLock);
std::optional<app_info> gApplication GUARDED_BY(gLock);

} // namespace

// clang-format off
const unsigned char B_HAND_CURSOR[] = {
    16, 1, 1, 4,
    0x00, 0x00, 0x0c, 0x00, 0x12, 0x00, 0x12, 0x00, 0x13, 0x80, 0x12, 0x70, 0x12, 0x4c, 0x72, 0x4a,
    0x90, 0x0a, 0x88, 0x01, 0x48, 0x01, 0x20, 0x01, 0x10, 0x02, 0x08, 0x02, 0x04, 0x04, 0x07, 0xfc,
    0x00, 0x00, 0x0c, 0x00, 0x1e, 0x00, 0x1e, 0x00, 0x1f, 0x80, 0x1f, 0xf0, 0x1f, 0xfc, 0x7f, 0xfe,
    0xff, 0xfe, 0xff, 0xff, 0x7f, 0xff, 0x3f, 0xff, 0x1f, 0xfe, 0x0f, 0xfe, 0x07, 0xfc, 0x07, 0xfc,
};
// clang-format on

static_assert(sizeof(B_HAND_CURSOR) == kImageSize);

CursorState CurrentCursor()
{
    const LeafLock lock(gLock);
    return gCursor;
}

void SetCursorHook(void (*changed)())
{
    {
        const LeafLock lock(gLock);
        gCursorHook = changed;
    }
    if (changed)
        changed();
}

void SetCursorImage(const void* data)
{
    if (!IsImage(data))
        return;
    // The hook is called without the lock, so that it may read the state; of several calls at once
    // the last one finds the last state.
    void (*hook)() = nullptr;
    {
        const LeafLock lock(gLock);
        gCursor.isSet = true;
        memcpy(gCursor.image, data, kImageSize);
        hook = gCursorHook;
    }
    if (hook)
        hook();
}

std::vector<std::string> ProgramArguments()
{
    {
        const LeafLock lock(gLock);
        if (!gArguments.empty())
            return gArguments;
    }
    std::vector<std::string> arguments;
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    for (std::string argument; std::getline(file, argument, '\0');)
        arguments.push_back(argument);
    return arguments;
}

void SetProgramArguments(std::vector<std::string> arguments)
{
    const LeafLock lock(gLock);
    gArguments.swap(arguments);
}

std::optional<app_info> RunningApplication()
{
    const LeafLock lock(gLock);
    return gApplication;
}

void SetRunningApplication(const std::optional<app_info>& info)
{
    const LeafLock lock(gLock);
    gApplication = info;
}
