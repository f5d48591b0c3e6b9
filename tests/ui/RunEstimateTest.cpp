#include "sysinfo/LibSysInfo.h"
#include "ui/TarvexWin.h"

#include <gtest/gtest.h>

#include <tuple>

TEST(RunEstimate, EachPassTakesTheSumOfItsGroups)
{
    constexpr unsigned kGraphics = 1 << GroupIndex("graphics");
    constexpr unsigned kDisk = 1 << GroupIndex("lifecycle") | 1 << GroupIndex("io");
    // groups: one bit each
    const std::tuple<unsigned, int32, const char*> rows[] = {
        { 0, 2, "0:00" },
        { kGraphics, 1, "1:20" },
        { kDisk, 4, "1:16" },
        { kGraphics | kDisk, 1, "1:39" },
        { kGraphics | kDisk, 8, "13:12" },
    };
    for (const auto& [groups, nbrCpus, text] : rows) {
        RunEstimate estimate;
        estimate.nbrCpus = nbrCpus;
        for (size_t i = 0; i < kNbrTestGroups; i++)
            estimate.selected[i] = (groups >> i & 1) != 0;
        EXPECT_STREQ(estimate.Text(), text);
    }
}

TEST(TestGroups, OnlyOneKindOfScreenSuitsTheGraphicsTests)
{
    const std::tuple<int, int, color_space, bool> rows[] = {
        { 1024, 768, B_CMAP8, true },
        { 1024, 768, B_RGB32, false },
        { 1023, 768, B_CMAP8, false },
        { 1024, 1024, B_CMAP8, false },
    };
    const system_info machine {};
    for (const auto& [width, height, depth, suits] : rows) {
        const BRect frame(0, 0, static_cast<float>(width - 1), static_cast<float>(height - 1));
        const LibSysInfo info(machine, frame, depth);
        EXPECT_EQ(SuitsGraphicsTests(info), suits) << width << " " << depth;
    }
}
