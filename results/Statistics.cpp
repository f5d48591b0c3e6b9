#include "results/Statistics.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

namespace statistics {
namespace {

constexpr double kTail = 0.025; // beyond each end of an interval

bool AreMeasured(std::span<const double> times)
{
    return !times.empty() && std::all_of(times.begin(), times.end(), [](double time) {
        return std::isfinite(time) && time > 0;
    });
}

double Quantile(std::span<const double> sorted, double share)
{
    const double position = share * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<size_t>(position);
    const size_t above = std::min(below + 1, sorted.size() - 1);
    return std::lerp(sorted[below], sorted[above], position - static_cast<double>(below));
}

// The probability that of n times exactly so many lie below the quantile.
double Binomial(int n, int below, double share)
{
    // By logarithms: from 1,030 times on the coefficient itself is more than a double holds.
    return std::exp(std::lgamma(n + 1) - std::lgamma(below + 1) - std::lgamma(n - below + 1)
        + below * std::log(share) + (n - below) * std::log1p(-share));
}

std::optional<Interval> QuantileInterval(std::span<const double> sorted, double share)
{
    const int n = static_cast<int>(sorted.size());
    if (n < 2)
        return {};
    // The ends are the times low and high, counted from 1. The quantile lies below the first where
    // fewer than low times lie below it, and above the second where high or more do.
    int low = 1;
    double below = Binomial(n, 0, share);
    for (; below + Binomial(n, low, share) <= kTail; low++)
        below += Binomial(n, low, share);
    int high = n;
    double above = Binomial(n, n, share);
    for (; above + Binomial(n, high - 1, share) <= kTail; high--)
        above += Binomial(n, high - 1, share);
    return Interval { sorted[low - 1], sorted[high - 1], 1 - below - above };
}

std::optional<double> Variation(std::span<const double> times)
{
    if (times.size() < 2)
        return {};
    const auto n = static_cast<double>(times.size());
    // In two passes: the mean of the squares less the square of the mean would lose its digits just
    // where the times hardly differ.
    const double mean = std::accumulate(times.begin(), times.end(), 0.0) / n;
    const double squares = std::accumulate(times.begin(), times.end(), 0.0,
        [mean](double sum, double time) { return sum + (time - mean) * (time - mean); });
    return std::sqrt(squares / (n - 1)) / mean;
}

// How many of the sorted times lie below their widest gap, and how wide it is.
struct Gap {
    size_t below = 0;
    double width = 0;
};

Gap WidestGap(std::span<const double> sorted)
{
    Gap widest;
    const auto smallerSide = [&](size_t below) { return std::min(below, sorted.size() - below); };
    for (size_t below = 1; below < sorted.size(); below++) {
        const double width = sorted[below] - sorted[below - 1];
        if (width > widest.width
            || (width == widest.width && smallerSide(below) > smallerSide(widest.below)))
            widest = { below, width };
    }
    return widest;
}

std::optional<TwoSpeeds> SpeedsOf(std::span<const double> sorted)
{
    const size_t n = sorted.size();
    const Gap gap = WidestGap(sorted);
    // In whole numbers, so that a share of exactly the percent counts.
    if (gap.width <= kSpeedGap * Quantile(sorted, 0.5)
        || std::min(gap.below, n - gap.below) * 100 < n * kSpeedSharePercent)
        return {};
    const auto speed = [n](std::span<const double> side) {
        return Speed { Quantile(side, 0.5),
            static_cast<double>(side.size()) / static_cast<double>(n) };
    };
    return TwoSpeeds { speed(sorted.first(gap.below)), speed(sorted.subspan(gap.below)) };
}

} // namespace

std::optional<Summary> Summarize(std::vector<double> times, Estimator estimator)
{
    if (!AreMeasured(times))
        return {};
    std::sort(times.begin(), times.end());
    Summary summary { static_cast<int>(times.size()), times.front(), {}, times.front(),
        Quantile(times, 0.5), times.back(), Variation(times) };
    if (estimator != Estimator::kMinimum) {
        const double share = estimator == Estimator::kMedian ? 0.5 : 0.25;
        summary.estimate = Quantile(times, share);
        summary.interval = QuantileInterval(times, share);
    }
    return summary;
}

Marks MarksOf(std::vector<double> times)
{
    Marks marks;
    marks.few = times.size() < kFewRepeats;
    if (!AreMeasured(times)) {
        marks.few = true;
        return marks;
    }
    std::sort(times.begin(), times.end());
    marks.twoSpeeds = SpeedsOf(times);
    marks.unsteady = Variation(times).value_or(0) > kUnsteadyVariation;
    if (!marks.few) {
        const auto interval = QuantileInterval(times, 0.5);
        marks.wide =
            !interval || interval->high - interval->low > kWideInterval * Quantile(times, 0.5);
    }
    return marks;
}

} // namespace statistics
