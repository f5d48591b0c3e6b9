#include "results/RunRecord.h"

#include "tests/support/Test.h"

namespace {

constexpr Probe kBest { 0.1, 0.2 };

// Of a core that nobody shares, at a clock so much slower than the best.
constexpr Probe AtClock(double slowness)
{
    return { kBest.core * slowness, kBest.clock * slowness };
}

Span SpanOf(double seconds, const Probe& probeAfter = kBest, double waited = 0)
{
    Span span;
    span.seconds = seconds;
    span.probeBefore = kBest;
    span.probeAfter = probeAfter;
    span.waited = waited;
    return span;
}

} // namespace

TEST(RunRecord, SixCleanSpansSpeakForAll)
{
    Series series { &TestNamed("Memory"), 2, {}, "" };
    for (int i = 0; i < 6; i++)
        series.spans.push_back(SpanOf(2));
    series.spans.push_back(SpanOf(3, { 0.2, 0.2 }));
    series.spans.push_back(SpanOf(4, kBest, 2));
    series.spans.push_back(SpanOf(5));
    series.spans.back().isThrottled = true;
    const auto six = FiguresOf(series, kBest);
    ASSERT_TRUE(six);
    EXPECT_EQ(six->summary.maximum, 2);
    EXPECT_EQ(six->shared, 3);
    EXPECT_FALSE(six->marks.shared || six->marks.wide);
    series.test = &TestNamed("Disk File Input");
    EXPECT_TRUE(FiguresOf(series, kBest)->marks.wide) << "as all of the disk are";

    series.spans.erase(series.spans.begin());
    const auto five = FiguresOf(series, kBest);
    ASSERT_TRUE(five);
    EXPECT_EQ(five->summary.maximum, 5);
    EXPECT_TRUE(five->marks.shared);
    EXPECT_FALSE(IsNarrow(series, kBest, 1000));
}

TEST(RunRecord, AMomentOfAHighClockIsNotItsBest)
{
    RunRecord record;
    Series& series = record.At(kTestTypes[0], 1);
    for (int i = 0; i < 7; i++)
        series.spans.push_back(SpanOf(2));
    EXPECT_EQ(SustainedProbe(record).core, kUnknownBest.core) << "14 are too few";
    series.spans.push_back(SpanOf(2, AtClock(0.5)));
    series.spans.push_back(SpanOf(2, AtClock(0.5)));
    Series& slow = record.At(kTestTypes[0], 2);
    for (int i = 0; i < 18; i++)
        slow.spans.push_back(SpanOf(2, AtClock(3)));
    EXPECT_EQ(SustainedProbe(record).core, kBest.core);
    EXPECT_EQ(SustainedProbe(record).clock, kBest.clock);
    EXPECT_EQ(MedianClock(record), kBest.clock);
}
