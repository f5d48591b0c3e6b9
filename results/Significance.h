// Whether two sets of figures differ by more than chance: the test of Mann and Whitney, and Holm's
// correction where it is asked of many rows at once. Arithmetic alone.
#pragma once

#include <optional>
#include <vector>

namespace statistics {

struct RankTest {
    double u; // pairs in which the figure of a is the greater, equal ones count half
    double p; // two-sided: how probable such a u, or one farther out, is where nothing differs
};

// Samples up to this size are tested exactly.
inline constexpr int kLargestExact = 100;

// The two-sided test of two independent samples. Exact where no figure occurs twice and neither
// sample is above kLargestExact; else by the normal distribution, corrected for ties and by a half
// for continuity. 1 where all figures are equal; nothing where a sample is empty or holds a NaN.
// Source: Mann and Whitney, "On a test of whether one of two random variables is stochastically
// larger than the other", The Annals of Mathematical Statistics 18 (1947), p. 50; the ties:
// Lehmann, "Nonparametrics" (1975), section 1.4.
[[nodiscard]] std::optional<RankTest> MannWhitney(
    const std::vector<double>& a, const std::vector<double>& b);

// The smallest two-sided p that samples of so many figures can reach exactly: that where all of one
// lie above all of the other. 1 where one is empty.
[[nodiscard]] double SmallestReachable(int n, int m);

// The p values, in their order, so enlarged that any below a level may be believed at this level
// though so many were asked; none above 1. A NaN was not asked: it stays and does not count.
// Source: Holm, "A simple sequentially rejective multiple test procedure", Scandinavian Journal of
// Statistics 6 (1979), p. 65.
[[nodiscard]] std::vector<double> Holm(const std::vector<double>& ps);

} // namespace statistics
