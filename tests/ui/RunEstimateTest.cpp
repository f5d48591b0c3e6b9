#include "ui/RunEstimate.h"

#include "sysinfo/LibSysInfo.h"

#include <gtest/gtest.h>

TEST(RunEstimate, EachPassTakesTheSumOfItsGroups)
{
    constexpr unsigned kGraphics = 1 << GroupIndex("graphics");
    constexpr unsigned kDisk = 1 << GroupIndex("lifecycle") | 1 << GroupIndex("io");
    const struct {
        unsigned groups; // one bit each
        int32 nbrCpus;
        const char* text;
    } rows[] = {
        { 0, 2, "0:00" },
        { kGraphics, 1, "1:20" },
        { kDisk, 4, "1:16" },
        { kGraphics | kDisk, 1, "1:39" },
        { kGraphics | kDisk, 8, "13:12" },
    };
    for (const auto& row : rows) {
        RunEstimate estimate;
        estimate.nbrCpus = row.nbrCpus;
        for (size_t i = 0; i < kNbrTestGroups; i++)
            estimate.selected[i] = (row.groups >> i & 1) != 0;
        EXPECT_STREQ(estimate.Text(), row.text);
    }
}

TEST(TestGroups, OnlyOneKindOfScreenSuitsTheGraphicsTests)
{
    const struct {
        int width, height;
        color_space depth;
        bool suits;
    } rows[] = {
        { 1024, 768, B_CMAP8, true },
        { 1024, 768, B_RGB32, false },
        { 1023, 768, B_CMAP8, false },
        { 1024, 1024, B_CMAP8, false },
    };
    const system_info machine {};
    for (const auto& row : rows) {
        const BRect frame(0, 0, float(row.width - 1), float(row.height - 1));
        const LibSysInfo info(machine, frame, row.depth);
        EXPECT_EQ(SuitsGraphicsTests(info), row.suits) << row.width << " " << row.depth;
    }
}
