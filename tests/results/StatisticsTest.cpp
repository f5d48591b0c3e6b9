#include "results/Statistics.h"

#include "results/Significance.h"
#include "tests/support/Test.h"

#include <fstream>
#include <numeric>
#include <sstream>

using namespace statistics;

namespace {

using Times = std::vector<double>;
using Set = std::map<std::string, Times>; // by the key of the line

std::map<std::string, Set> ReadSets()
{
    std::map<std::string, Set> sets;
    std::ifstream file(TARVEX_TESTS "/results/data/StatisticsSets.txt");
    std::string name;
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string key;
        words >> key;
        if (key == "set")
            words >> name;
        else if (!key.empty() && key != "#")
            for (double value; words >> value;)
                sets[name][key].push_back(value);
    }
    return sets;
}

void ExpectSixDigits(const Times& got, const Times& wanted)
{
    ASSERT_EQ(got.size(), wanted.size());
    for (size_t i = 0; i < got.size(); i++)
        EXPECT_NEAR(got[i], wanted[i], std::abs(wanted[i]) * 5e-7) << "figure " << i;
}

Times Upwards(size_t count, double first)
{
    Times times(count);
    std::iota(times.begin(), times.end(), first);
    return times;
}

Times EstimateOf(const Times& times, Estimator estimator)
{
    const auto summary = Summarize(times, estimator);
    if (!summary || !summary->interval)
        return {};
    const auto& [low, high, coverage] = *summary->interval;
    return { summary->estimate, low, high, coverage };
}

std::string Text(const Marks& marks)
{
    std::ostringstream text;
    text.precision(2);
    if (marks.twoSpeeds) {
        for (const Speed& speed : { marks.twoSpeeds->fast, marks.twoSpeeds->slow })
            text << speed.median << " (" << std::lround(speed.share * 100) << " %) ";
    }
    text << (marks.unsteady ? "unsteady " : "") << (marks.few ? "few " : "");
    EXPECT_EQ(marks.ForbidVerdict(), !text.str().empty());
    text << (marks.wide ? "wide " : "");
    return text.str();
}

} // namespace

TEST(Statistics, OfTwentySetsAreThoseOfScipy)
{
    const auto sets = ReadSets();
    EXPECT_EQ(sets.size(), 20u);
    for (const auto& [name, set] : sets) {
        SCOPED_TRACE(name);
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
    const std::tuple<const char*, Times, const char*> rows[] = {
        { "six equal ones", { 1, 1, 1, 1, 1, 1 }, "" },
        { "interval of 4 percent", { 50, 50, 50, 50, 51, 52 }, "" },
        { "above", { 50, 50, 50, 50, 51, 52.04 }, "wide " },
        { "five", { 1, 1, 1, 1, 1 }, "few " },
        { "variation of 5 percent", { 21, 19, 20 }, "few " },
        { "above", { 21.01, 19, 20 }, "unsteady few " },
        { "gap of 25 percent", { 5, 4, 4, 5, 4, 4 }, "unsteady wide " },
        { "above", { 5.01, 4, 4, 5.01, 4, 4 }, "4 (67 %) 5 (33 %) unsteady wide " },
        { "20 percent slow", { 1, 1, 1, 2, 1, 1, 1, 2, 1, 1 }, "1 (80 %) 2 (20 %) unsteady wide " },
        { "18 percent slow", { 1, 1, 1, 2, 1, 1, 1, 2, 1, 1, 1 }, "unsteady wide " },
        { "20 percent fast", { 1, 2, 2, 2, 2 }, "1 (20 %) 2 (80 %) unsteady few " },
        { "17 percent fast", { 1, 2, 2, 2, 2, 2 }, "unsteady wide " },
        { "of equal gaps the middle", { 1, 2, 2, 2, 3, 3 }, "2 (67 %) 3 (33 %) unsteady wide " },
        { "likewise", { 1, 1, 2, 2, 2, 3 }, "1 (33 %) 2 (67 %) unsteady wide " },
        { "one", { 1 }, "few " },
        { "none", {}, "few " },
        { "one that is none", { 1, 2, 1, 2, 1, 2, NAN }, "few " },
    };
    for (const auto& [name, times, marks] : rows)
        EXPECT_EQ(Text(MarksOf(times)), marks) << name;
}

TEST(Marks, NameBothSpeedsOfAMachineAndLeaveASteadySieveAlone)
{
    auto sets = ReadSets();
    EXPECT_EQ(Text(MarksOf(sets["imitated-two-speeds"]["x"])),
        "0.0043 (45 %) 0.0084 (55 %) unsteady wide ");
    EXPECT_EQ(Text(MarksOf(sets["imitated-sieve"]["x"])), "");
    EXPECT_EQ(Text(MarksOf(sets["recorded-strings"]["x"])), "");
    // Two of thirty times are at half speed.
    EXPECT_EQ(Text(MarksOf(sets["recorded-ackermann"]["x"])), "unsteady ");
}

TEST(SmallestReachable, IsThePOfSetsThatLieApart)
{
    const std::pair<int, int> rows[] = { { 1, 1 }, { 2, 3 }, { 6, 6 }, { 100, 7 } };
    for (const auto& [n, m] : rows) {
        const Times low = Upwards(n, 0);
        const Times high = Upwards(m, 1000);
        ExpectSixDigits({ SmallestReachable(n, m), SmallestReachable(m, n) },
            { MannWhitney(low, high)->p, MannWhitney(high, low)->p });
    }
    EXPECT_NEAR(SmallestReachable(6, 6), 0.0021645, 1e-7);
    EXPECT_EQ(SmallestReachable(0, 5), 1);
    EXPECT_EQ(SmallestReachable(5, 0), 1);
}

TEST(Holm, EnlargesInOrderNeverBackAndNotAboveOne)
{
    ExpectSixDigits(Holm({ 0.01, 0.04, 0.03, 0.005 }), { 0.03, 0.06, 0.06, 0.02 });
    ExpectSixDigits(Holm({ 0.6, 0.3, 0.01 }), { 0.6, 0.6, 0.03 });
    ExpectSixDigits(Holm({ 0.6, 0.9 }), { 1, 1 });
    ExpectSixDigits(Holm({}), {});
    const Times some = Holm({ 0.02, NAN, 0.03 }); // two were asked
    EXPECT_TRUE(std::isnan(some[1]));
    ExpectSixDigits({ some[0], some[2] }, { 0.04, 0.04 });
}
