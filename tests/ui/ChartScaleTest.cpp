#include "ui/ChartScale.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(ChartScale, IsTheNextStepAboveTheGreatestValue)
{
    const struct {
        double greatest;
        float maxScale;
        int32 step;
    } rows[] = {
        { 0, 10, 10 },
        { 5, 10, 10 },
        { 9.6, 20, 10 },
        { 10, 20, 10 },
        { 99, 100, 10 },
        { 100, 110, 10 },
        { 347, 350, 10 },
        { 350, 360, 10 },
        { 999.5, 1100, 100 },
        { 12345, 13000, 1000 },
        { 1e12, 2e9f, 100000000 },
        { INFINITY, 2e9f, 100000000 },
    };
    for (const auto& row : rows) {
        const ChartScale scale = ChartScale::For(row.greatest);
        EXPECT_EQ(scale.maxScale, row.maxScale) << row.greatest;
        EXPECT_EQ(scale.step, row.step) << row.greatest;
        EXPECT_EQ(scale.XFor(0, 320, 700), 320);
        EXPECT_EQ(scale.XFor(double(row.maxScale) / 2, 320, 700), 510);
        EXPECT_EQ(scale.XFor(double(row.maxScale), 320, 700), 700);
    }
}
