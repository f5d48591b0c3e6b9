#include "ui/RunEstimate.h"

#include "sysinfo/LibSysInfo.h"

int32 RunEstimate::Seconds() const
{
    int32 sum = 0;
    for (size_t i = 0; i < kNbrTestGroups; i++)
        sum += selected[i] ? kTestGroups[i].seconds : 0;
    return sum * nbrCpus;
}

LibString RunEstimate::Text() const
{
    const int32 total = Seconds();
    LibString text;
    text.Formatted("%d:%2.2d", total / 60, total % 60);
    return text;
}

bool SuitsGraphicsTests(const LibSysInfo& info)
{
    return info.screenWidth == 1024 && info.screenHeight == 768 && info.colorSpace == B_CMAP8;
}
