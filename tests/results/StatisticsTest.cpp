#include "results/Statistics.h"

#include "results/RunRecord.h"
#include "results/Significance.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

using namespace statistics;

namespace {

using Times = std::vector<double>;

void ExpectSixDigits(const Times& got, const Times& wanted)
{
    ASSERT_EQ(got.size(), wanted.size());
    for (size_t i = 0; i < got.size(); i++)
        EXPECT_NEAR(got[i], wanted[i], std::abs(wanted[i]) * 5e-7) << "figure " << i;
}

Times EstimateOf(const Times& times, Estimator estimator)
{
    const auto summary = Summarize(times, estimator);
    if (!summary || !summary->interval)
        return {};
    const auto& [low, high, coverage] = *summary->interval;
    return { summary->estimate, low, high, coverage };
}

} // namespace

TEST(Statistics, OfTwentySetsAreThoseOfScipy)
{
    for (const auto& [name, text] : ReadRows("results/data/StatisticsSets.txt")) {
        SCOPED_TRACE(name);
        std::map<std::string, Times> set; // by the key of the line
        std::istringstream lines(text);
        for (std::string key; lines >> key; lines.clear())
            for (double value; lines >> value;)
                set[key].push_back(value);
        const Times& x = set.at("x");
        const auto summary = Summarize(x);
        ASSERT_TRUE(summary);
        EXPECT_EQ(summary->n, static_cast<int>(x.size()));
        ExpectSixDigits({ summary->minimum, summary->median, summary->maximum,
                            summary->variation.value_or(NAN) },
            set.at("spread"));
        ExpectSixDigits(EstimateOf(x, Estimator::kMedian), set.at("median"));
        ExpectSixDigits(EstimateOf(x, Estimator::kLowerQuartile), set.at("quartile"));
        const auto test = MannWhitney(x, set.at("y"));
        ASSERT_TRUE(test);
        ExpectSixDigits({ test->u, test->p }, set.at("ranks"));
    }
}

TEST(Statistics, WhatCannotBeReckonedIsNotThere)
{
    const Times damaged[] = { {}, { 1, NAN }, { 1, INFINITY }, { 1, 0 }, { 1, -1 } };
    for (const Times& times : damaged)
        EXPECT_FALSE(Summarize(times)) << testing::PrintToString(times);
    const auto one = Summarize({ 3 });
    ASSERT_TRUE(one);
    EXPECT_EQ(one->estimate, 3);
    EXPECT_FALSE(one->interval || one->variation);
    const auto least = Summarize({ 3, 2, 4 }, Estimator::kMinimum);
    ASSERT_TRUE(least);
    EXPECT_EQ(least->estimate, 2);
    EXPECT_FALSE(least->interval);
    EXPECT_FALSE(MannWhitney({}, { 1 }) || MannWhitney({ 1 }, {}));
    EXPECT_FALSE(MannWhitney({ 1, NAN }, { 2, 3 }) || MannWhitney({ 2, 3 }, { 1, NAN }));
}

TEST(Marks, HoldBeyondTheirLimitsOnly)
{
    for (const auto& [times, told] : ReadRows("results/data/marks")) {
        std::istringstream numbers(times);
        const Marks marks = MarksOf({ std::istream_iterator<double>(numbers), {} });
        EXPECT_EQ(MarksText(marks), told == "none" ? "" : told) << times;
        EXPECT_EQ(marks.ForbidVerdict(), told != "none" && told != "wide") << times;
    }
    EXPECT_EQ(MarksText(MarksOf({})), "few");
    EXPECT_EQ(MarksText(MarksOf({ 1, 2, 1, 2, 1, 2, NAN })), "few");
}
