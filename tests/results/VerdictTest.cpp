#include "results/Verdict.h"

#include "results/RunComparison.h"
#include "results/Significance.h"
#include "tests/support/Test.h"

using namespace statistics;

namespace {

std::vector<double> Times(size_t count, double first, double step = 0.001)
{
    std::vector<double> times;
    for (size_t i = 0; i < count; i++)
        times.push_back(first + step * static_cast<double>(i));
    return times;
}

// Twice as fast, beyond doubt if count is enough for one.
Row Faster(size_t count)
{
    return { Times(count, 2, 0.002), Times(count, 1), {} };
}

// How the verdict on each begins; "-" where repeats are too few for one.
std::string Told(const std::vector<Row>& rows)
{
    std::string told;
    for (const Judgement& judged : Judge(rows))
        told += judged.untold == Untold::kTooFewRepeats ? '-' : *VerdictText(judged.verdict);
    return told;
}

} // namespace

TEST(Judge, CallsADifferenceRealOnlyBeyondTheLeast)
{
    const std::vector<double> quick = Times(10, 1), slow = Times(10, 1.03);
    for (const double least : { 0.0, 0.015, 0.03, 0.1 }) {
        EXPECT_EQ(Told({ { quick, slow, {}, least } }), least < 0.03 ? "s" : "n");
        EXPECT_EQ(Told({ { slow, quick, {}, least } }), least < 0.03 ? "f" : "n");
    }
}

TEST(Judge, SaysWhereRepeatsAreTooFewForSoManyRows)
{
    // Of so many rows with so many repeats all can be told, and none of one more.
    for (const auto& [repeats, rows] : { std::pair(4, 1), { 5, 6 }, { 6, 23 }, { 7, 85 } }) {
        EXPECT_EQ(Told(std::vector<Row>(rows, Faster(repeats))), std::string(rows, 'f'));
        EXPECT_EQ(Told(std::vector<Row>(rows + 1, Faster(repeats))), std::string(rows + 1, '-'));
    }
    EXPECT_EQ(Told({ { Times(39, 2), Times(1, 1), {} } }), "-") << "exactly 5 percent at best";
    // Rows with more repeats are not held back by those with few, but count against them.
    for (const int few : { 23, 99 }) { // 7 repeats would be too few for a hundred rows
        std::vector<Row> mixed(few, Faster(6));
        mixed.push_back(Faster(7));
        EXPECT_EQ(Told(mixed), std::string(few, '-') + "f");
        EXPECT_DOUBLE_EQ(Judge(mixed).back().p.value_or(NAN), SmallestReachable(7, 7));
    }
}
