// What a set of repeated times says: its estimate with an interval, its spread, and the marks that
// warn of it. Arithmetic alone. Times are seconds for the same work, so that the shorter is the
// faster in every test, whatever unit its figure has; where a test fixes its duration and counts
// the work, they are seconds for one unit of it.
#pragma once

#include <optional>
#include <vector>

namespace statistics {

enum class Estimator { kMedian, kLowerQuartile, kMinimum };

// The one of which results files and comparisons speak.
inline constexpr Estimator kEstimator = Estimator::kMedian;

// Times of the sample between which the estimated time of the whole population lies.
struct Interval {
    double low;
    double high;
    double coverage; // how probable that is: at least 0.95, less where the sample is too small
};

struct Summary {
    int n;
    double estimate;
    std::optional<Interval> interval;
    double minimum;
    double median;
    double maximum;
    std::optional<double> variation; // the coefficient: sample standard deviation over mean
};

// Nothing where there is no time or one of them is not a finite number above 0: such a time was not
// measured, and what it stands for is unknown. Of one time there is neither interval nor variation.
//
// Quartiles lie between two times in proportion (definition 7 of Hyndman and Fan, "Sample quantiles
// in statistical packages", The American Statistician 50 (1996), p. 361). Their intervals are order
// statistics, whatever the distribution: with the probability of 2.5 percent or less the quantile
// lies below the lower one, with as much above the upper one (David and Nagaraja, "Order
// Statistics", 3rd edition (2003), section 7.1). Where no time lies far enough out the interval
// ends at the outermost one: at both ends below 6 times for the median; for the lower quartile at
// the lower end below 13. The median's coverage then falls short of 95 percent, the quartile's
// below 11 times. The minimum has no interval: how far the population goes below it cannot be told
// without assuming a distribution.
[[nodiscard]] std::optional<Summary> Summarize(
    std::vector<double> times, Estimator estimator = kEstimator);

// Half of a sample with two speeds.
struct Speed {
    double median; // seconds
    double share; // of the times, 0 to 1
};

struct TwoSpeeds {
    Speed fast;
    Speed slow;
};

inline constexpr int kFewRepeats = 6; // below: few
inline constexpr double kUnsteadyVariation = 0.05; // above: unsteady
inline constexpr double kSpeedGap = 0.25; // of the median; above: two speeds
inline constexpr int kSpeedSharePercent = 20; // on each side at least: two speeds
inline constexpr double kWideInterval = 0.04; // of the estimate; above: wide

struct Marks {
    bool shared = false; // the processor was; only who timed the sample can tell and set it
    std::optional<TwoSpeeds> twoSpeeds;
    bool unsteady = false;
    bool few = false;
    // Another sitting may well tell something else. It forbids no verdict: the tests of those look
    // at the times themselves.
    bool wide = false;

    [[nodiscard]] bool ForbidVerdict() const { return shared || twoSpeeds || unsteady || few; }
};

// Two speeds are apart by the widest gap between neighbours in order; of equal gaps that counts
// which parts the times most evenly. Wide are times the median's interval of which is, or that have
// none although they are not few. Times that Summarize() refuses are marked few and nothing else.
[[nodiscard]] Marks MarksOf(std::vector<double> times);

} // namespace statistics
