#include "ui/TestGroups.h"

#include "sysinfo/LibSysInfo.h"

#include <gtest/gtest.h>

TEST(TestGroups, OnlyOneKindOfScreenSuitsTheGraphicsTests)
{
    const struct {
        int width;
        int height;
        color_space depth;
        bool suits;
    } rows[] = {
        { 1024, 768, B_CMAP8, true },
        { 1024, 768, B_RGB32, false },
        { 1024, 768, B_GRAY8, false },
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

TEST(TestGroups, OnlyCheckBoxesSendTheirMessages)
{
    for (const uint32 what : { 2000u, 2001u, 2004u, 2006u, 2008u, 3000u, 3001u })
        EXPECT_TRUE(IsTestGroupMessage(what)) << what;
    for (const uint32 what : { 0u, 100u, 1999u, 2005u, 2009u, 2999u, 3002u })
        EXPECT_FALSE(IsTestGroupMessage(what)) << what;
}
