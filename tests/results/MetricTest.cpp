#include "results/Metric.h"

#include "tests/support/Test.h"

namespace {

void Record(Metric& metric, const std::vector<float>& seconds)
{
    for (const float time : seconds)
        metric.Time(time);
}

// The slots in the order in which the chart draws them.
std::vector<int> DrawingOrder(Metric& metric)
{
    std::vector<int> slots;
    float limit = 1e30f;
    for (int slot = metric.NextSmallestRate(limit); slot >= 0 && slots.size() < 9;
         slot = metric.NextSmallestRate(limit))
        slots.push_back(slot);
    return slots;
}

} // namespace

TEST(Metric, TheFirstOfEqualRatesIsTheMaximum)
{
    Metric metric;
    int slot = 77;
    EXPECT_EQ(metric.MaxRate(slot), 0);
    metric.NbrCycles(1000);
    Record(metric, { 0, 0.5f, 0.25f, 0.25f, -0.1f });
    metric.nbrTimes = 1000000; // as a damaged record might say
    EXPECT_EQ(metric.MaxRate(slot), 4000);
    EXPECT_EQ(slot, 2);
}

TEST(Metric, SlotsAreDrawnFromTheFastestToTheSlowest)
{
    Metric metric;
    Record(metric, { 0.1f, 0.1f, 0.2f, 0.05f, 0, -1 });
    EXPECT_EQ(DrawingOrder(metric), (std::vector<int> { 3, 0, 2 })); // 1 is not below 0
    EXPECT_EQ(DrawingOrder(metric), (std::vector<int> { 1 })); // the others are drawn
    metric.SetDrawn(false);
    metric.SetDrawn(3, true);
    metric.SetDrawn(8, true);
    EXPECT_EQ(DrawingOrder(metric), (std::vector<int> { 0, 2 }));

    Metric thirds; // 1 / 0.3 is no float: its own limit must not let it pass again
    Record(thirds, { 0.3f, 0.3f, 0.7f, 0.7f });
    EXPECT_EQ(DrawingOrder(thirds), (std::vector<int> { 0, 2 }));
}
