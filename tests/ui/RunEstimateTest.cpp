#include "ui/RunEstimate.h"

#include "sysinfo/LibSysInfo.h"

#include <gtest/gtest.h>

#include <string_view>

namespace {

RunEstimate EstimateOf(std::initializer_list<std::string_view> labels, int32 nbrCpus)
{
    RunEstimate estimate;
    estimate.nbrCpus = nbrCpus;
    for (const std::string_view label : labels) {
        for (int32 i = 0; i < kNbrTestGroups; i++)
            estimate.selected[i] |= label == kTestGroups[i].label || label == "all";
    }
    return estimate;
}

} // namespace

TEST(RunEstimate, EachPassTakesTheSumOfItsGroups)
{
    const struct {
        std::initializer_list<std::string_view> labels;
        int32 nbrCpus;
        const char* text;
    } rows[] = {
        { {}, 2, "0:00" },
        { { "Graphics" }, 1, "1:20" },
        { { "all" }, 1, "1:59" },
        { { "all" }, 8, "15:52" },
        { { "Graphics", "LifeCycle" }, 4, "6:04" },
    };
    for (const auto& row : rows)
        EXPECT_STREQ(EstimateOf(row.labels, row.nbrCpus).Text(), row.text) << row.nbrCpus;
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
