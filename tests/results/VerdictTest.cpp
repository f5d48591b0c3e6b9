#include "results/Verdict.h"

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

int Count(const std::vector<Judgement>& judgements, Verdict verdict, std::optional<Untold> untold)
{
    int count = 0;
    for (const Judgement& judgement : judgements)
        count += judgement.verdict == verdict && judgement.untold == untold;
    return count;
}

} // namespace

TEST(Judge, CallsADifferenceRealOnlyBeyondTheLeast)
{
    const Row same { Times(10, 1), Times(10, 1.03), {}, 0 };
    for (const double least : { 0.0, 0.015, 0.03, 0.1 }) {
        const bool isReal = least < 0.03;
        EXPECT_EQ(Judge({ { same.baseline, same.candidate, {}, least } })[0].verdict,
            isReal ? Verdict::kSlower : Verdict::kNoRealDifference);
        EXPECT_EQ(Judge({ { same.candidate, same.baseline, {}, least } })[0].verdict,
            isReal ? Verdict::kFaster : Verdict::kNoRealDifference);
    }
}

TEST(Judge, SaysWhereRepeatsAreTooFewForSoManyRows)
{
    const struct {
        size_t repeats;
        size_t rows; // of which all can be told, and none of one more
    } limits[] = { { 4, 1 }, { 5, 6 }, { 6, 23 }, { 7, 85 } };
    for (const auto& [repeats, rows] : limits) {
        const auto most = Judge(std::vector<Row>(rows, Faster(repeats)));
        EXPECT_EQ(Count(most, Verdict::kFaster, {}), static_cast<int>(rows)) << repeats;
        const auto more = Judge(std::vector<Row>(rows + 1, Faster(repeats)));
        EXPECT_EQ(
            Count(more, Verdict::kCannotTell, Untold::kTooFewRepeats), static_cast<int>(rows) + 1)
            << repeats;
    }
    // Rows with more repeats are not held back by those with few, but count against them.
    for (const int few : { 23, 99 }) { // 7 repeats would be too few for a hundred rows
        std::vector<Row> mixed(few, Faster(6));
        mixed.push_back(Faster(7));
        const auto judged = Judge(mixed);
        EXPECT_EQ(Count(judged, Verdict::kCannotTell, Untold::kTooFewRepeats), few);
        EXPECT_EQ(judged.back().verdict, Verdict::kFaster);
        EXPECT_DOUBLE_EQ(judged.back().p.value_or(NAN), SmallestReachable(7, 7));
    }
}
