#include <cstdio>
#include <memory>

#include "results/Results.h"
#include "sysinfo/LibDeviceInfo.h"
#include "sysinfo/LibSysInfo.h"

namespace {

void AppendLine(LinkList<RelatedDevices>& devices, int type, const LibString& text)
{
    auto line = std::make_unique<RelatedDevices>();
    line->Description(type, text);
    if (devices.Insert(std::move(line)) == nullptr)
        fprintf(stderr, "<%s> not inserted\n", text.operator const char*());
}

} // namespace

void Results::FillTheseDevices()
{
    const LibSysInfo machine;
    LibString text;
    text.Formatted("%s, %dx%d resolution", machine.ScreenDepthStr(), machine.screenWidth,
        machine.screenHeight);
    AppendLine(devices, -1, text);

    LibDeviceInfo info;
    int index = 0;
    int classId = 0;
    LibString name;
    while (info.NextClassId(index, classId, name)) {
        if (info.FindDevice(classId, text))
            AppendLine(devices, classId, text);
    }
}
