#include "results/RunRecord.h"

#include <gtest/gtest.h>

namespace {

constexpr double kBest = 0.1; // of the probes
constexpr double kSlowest = 0.114; // that is not shared yet

Span SpanOf(double seconds, double probeAfter = kBest, double waited = 0)
{
    Span span;
    span.seconds = seconds;
    span.probeBefore = kBest;
    span.probeAfter = probeAfter;
    span.waited = waited;
    return span;
}

} // namespace

TEST(RunRecord, ASpanIsSharedByEitherProbeOrByWaiting)
{
    EXPECT_FALSE(IsShared(SpanOf(2, kSlowest), kBest));
    EXPECT_TRUE(IsShared(SpanOf(2, 0.116), kBest));
    Span before = SpanOf(2);
    before.probeBefore = 0.116;
    EXPECT_TRUE(IsShared(before, kBest));
    EXPECT_FALSE(IsShared(SpanOf(2, kSlowest, 0.039), kBest));
    EXPECT_TRUE(IsShared(SpanOf(2, kBest, 0.041), kBest));
    EXPECT_TRUE(IsShared(SpanOf(0.2, kBest, 0.039), kBest)); // a share, not so many seconds
}

TEST(RunRecord, SixCleanSpansSpeakForAll)
{
    Series series;
    for (int i = 0; i < 6; i++)
        series.spans.push_back(SpanOf(2));
    series.spans.push_back(SpanOf(3, 0.2));
    series.spans.push_back(SpanOf(4, kBest, 2));
    series.spans.push_back(SpanOf(5));
    series.spans.back().isThrottled = true;
    const auto six = FiguresOf(series, kBest);
    ASSERT_TRUE(six);
    EXPECT_EQ(six->summary.maximum, 2);
    EXPECT_EQ(six->shared, 3);
    EXPECT_FALSE(six->marks.shared);

    series.spans.erase(series.spans.begin());
    const auto five = FiguresOf(series, kBest);
    ASSERT_TRUE(five);
    EXPECT_EQ(five->summary.maximum, 5);
    EXPECT_TRUE(five->marks.shared);
    EXPECT_FALSE(IsNarrow(series, kBest, 1000));
}

TEST(RunRecord, RepeatsAreToldAtTheClockOfTheBestProbe)
{
    // The same work at three clocks, the last one drifting while it was measured.
    Series series;
    series.spans = { SpanOf(2), SpanOf(2.2), SpanOf(2.1, 0.11) };
    series.spans[1].probeBefore = series.spans[1].probeAfter = 0.11;
    const std::vector<double> times = CleanTimesOf(series, kBest);
    ASSERT_EQ(times.size(), 3u);
    for (const double seconds : times)
        EXPECT_DOUBLE_EQ(seconds, 2);
    EXPECT_EQ(TimesOf(series), (std::vector<double> { 2, 2.2, 2.1 }));
    EXPECT_EQ(CleanTimesOf(series, std::numeric_limits<double>::infinity()), TimesOf(series));
    series.spans[1].probeAfter = 0; // not taken
    EXPECT_DOUBLE_EQ(CleanTimesOf(series, kBest)[1], 2.2);
    series.spans = { SpanOf(2.1, 0.11) };
    EXPECT_DOUBLE_EQ(CleanTimesOf(series, kBest)[0], 2.1) << "a single span stands as measured";
}

TEST(RunRecord, AMomentOfAHighClockIsNotItsBest)
{
    RunRecord record;
    Series& series = record.At(kTestTypes[0], 1);
    for (int i = 0; i < 7; i++)
        series.spans.push_back(SpanOf(2));
    EXPECT_EQ(SustainedProbe(record), std::numeric_limits<double>::infinity()) << "14 are too few";
    series.spans.push_back(SpanOf(2, kBest / 2));
    series.spans.push_back(SpanOf(2, kBest / 2));
    EXPECT_EQ(SustainedProbe(record), kBest);
    Series& slow = record.At(kTestTypes[0], 2);
    for (int i = 0; i < 18; i++)
        slow.spans.push_back(SpanOf(2, 3 * kBest));
    EXPECT_EQ(SustainedProbe(record), kBest);
}
