#include "results/Verdict.h"

#include "results/Significance.h"
#include "results/Statistics.h"

#include <algorithm>
#include <limits>

namespace statistics {
namespace {

struct Compared {
    Judgement judgement;
    double smallest = 1; // p that its sizes can reach
    double p = 1; // before the correction
    bool shorterTimes = false; // the candidate's
};

// Of the candidate, and of the baseline as if it had been by that share as fast as it is said to
// be.
RankTest ApartByMoreThan(double share, const Row& row, double speed)
{
    std::vector<double> baseline = row.baseline;
    for (double& seconds : baseline)
        seconds *= speed < 1 ? 1 + share : 1 / (1 + share);
    return MannWhitney(row.candidate, baseline).value(); // as both have times
}

Compared Prepare(const Row& row)
{
    const std::optional<Summary> baseline = Summarize(row.baseline);
    const std::optional<Summary> candidate = Summarize(row.candidate);
    Compared compared;
    compared.judgement.untold = row.untold;
    if (!baseline || !candidate)
        return compared;
    const double speed = baseline->estimate / candidate->estimate;
    compared.judgement.speed = speed;
    const RankTest test = ApartByMoreThan(row.least, row, speed);
    compared.smallest = SmallestReachable(candidate->n, baseline->n);
    compared.p = std::max(test.p, compared.smallest);
    compared.shorterTimes = test.u < 0.5 * candidate->n * baseline->n;
    return compared;
}

// Marks the comparable rows whose sizes let no difference pass.
void LeaveOutTheSmall(std::vector<Compared>& all, double level)
{
    std::vector<double> smallest;
    for (const Compared& one : all) {
        if (!one.judgement.untold)
            smallest.push_back(one.smallest);
    }
    std::sort(smallest.begin(), smallest.end());
    for (Compared& one : all) {
        const auto family = static_cast<double>(
            std::upper_bound(smallest.begin(), smallest.end(), one.smallest) - smallest.begin());
        if (!one.judgement.untold && family * one.smallest >= level)
            one.judgement.untold = Untold::kTooFewRepeats;
    }
}

Verdict VerdictOf(double p, double level, bool shorterTimes, double speed)
{
    // Ranks look at all times and the speed at the medians: where they disagree nobody could say
    // which one is the faster.
    if (p < level && shorterTimes && speed > 1)
        return Verdict::kFaster;
    if (p < level && !shorterTimes && speed < 1)
        return Verdict::kSlower;
    return Verdict::kNoRealDifference;
}

} // namespace

std::vector<Judgement> Judge(const std::vector<Row>& rows, double level)
{
    std::vector<Compared> all;
    for (const Row& row : rows)
        all.push_back(Prepare(row));
    LeaveOutTheSmall(all, level);

    // A NaN takes no share of the level, see Holm().
    std::vector<double> ps;
    for (const Compared& one : all)
        ps.push_back(one.judgement.untold ? std::numeric_limits<double>::quiet_NaN() : one.p);
    const std::vector<double> adjusted = Holm(ps);

    std::vector<Judgement> judgements;
    for (size_t i = 0; i < all.size(); i++) {
        Judgement& judgement = judgements.emplace_back(all[i].judgement);
        if (judgement.untold)
            continue;
        judgement.p = adjusted[i];
        judgement.verdict = VerdictOf(adjusted[i], level, all[i].shorterTimes, *judgement.speed);
    }
    return judgements;
}

} // namespace statistics
