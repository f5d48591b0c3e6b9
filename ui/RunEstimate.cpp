#include "ui/RunEstimate.h"

#include "sysinfo/LibSysInfo.h"

#include <algorithm>

LibString MinutesText(int32 seconds)
{
    LibString text;
    text.Formatted("%d:%2.2d", seconds / 60, seconds % 60);
    return text;
}

int32 RunEstimate::Seconds() const
{
    int32 sum = 0;
    for (size_t i = 0; i < kNbrTestGroups; i++)
        sum += selected[i] ? kTestGroups[i].seconds : 0;
    return sum * nbrCpus;
}

LibString RunEstimate::Text() const
{
    return MinutesText(Seconds());
}

RunProgress::RunProgress()
{
    std::transform(std::begin(kTestGroups), std::end(kTestGroups), seconds,
        [](const TestGroup& group) { return group.takes; });
}

void RunProgress::Begin(const RunEstimate& plan, bigtime_t now)
{
    groups.clear();
    for (size_t group = 0; group < kNbrTestGroups; group++) {
        if (plan.selected[group])
            groups.push_back(group);
    }
    nbrPasses = static_cast<size_t>(plan.nbrCpus);
    nbrBegun = 0;
    start = groupStart = now;
    share = 0;
}

void RunProgress::GroupBegins(bigtime_t now)
{
    if (groups.empty())
        return;
    // The last one of a pass has the machine's rest behind it, which belongs to the run too.
    if (nbrBegun > 0)
        seconds[groups[(nbrBegun - 1) % groups.size()]] =
            static_cast<double>(now - groupStart) / 1e6;
    groupStart = now;
    nbrBegun++;
    const double done = static_cast<double>(now - start) / 1e6;
    share = done / (done + SecondsLeft());
}

double RunProgress::SecondsLeft() const
{
    double left = 0;
    for (size_t group = nbrBegun > 0 ? nbrBegun - 1 : 0; group < groups.size() * nbrPasses; group++)
        left += seconds[groups[group % groups.size()]];
    return left;
}

bool SuitsGraphicsTests(const LibSysInfo& info)
{
    return info.screenWidth == 1024 && info.screenHeight == 768 && info.colorSpace == B_CMAP8;
}
