#include "results/RunRecord.h"

#include "tests/support/Test.h"

TEST(RunRecord, AMomentOfAHighClockIsNotItsBest)
{
    RunRecord record;
    constexpr Probe kBest { 0.1, 0.2 };
    const auto addSpans = [&](int count, double slowness) {
        const Probe after { kBest.core * slowness, kBest.clock * slowness };
        for (int i = 0; i < count; i++)
            record.At(kTestTypes[0], 1).spans.push_back({ 2, 0, kBest, after, 0, false, {} });
    };
    addSpans(7, 1);
    EXPECT_EQ(SustainedProbe(record).core, kUnknownBest.core) << "14 are too few";
    addSpans(2, 0.5);
    addSpans(18, 3);
    EXPECT_EQ(SustainedProbe(record).core, kBest.core);
    EXPECT_EQ(SustainedProbe(record).clock, kBest.clock);
    EXPECT_EQ(MedianClock(record), kBest.clock);
}
