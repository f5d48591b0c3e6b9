#include "results/Significance.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace statistics {
namespace {

struct Ranked {
    double u = 0; // of the first sample
    double ties = 0; // the sum of t^3 - t over groups of t equal figures
};

Ranked Rank(const std::vector<double>& a, const std::vector<double>& b)
{
    struct Figure {
        double value;
        bool first;
    };
    std::vector<Figure> figures;
    for (const double value : a)
        figures.push_back({ value, true });
    for (const double value : b)
        figures.push_back({ value, false });
    std::sort(figures.begin(), figures.end(),
        [](const Figure& left, const Figure& right) { return left.value < right.value; });

    Ranked ranked;
    double below = 0; // figures of the second sample under the current group
    for (auto from = figures.begin(); from != figures.end();) {
        const auto to = std::find_if(
            from, figures.end(), [&](const Figure& figure) { return figure.value != from->value; });
        const auto ours = static_cast<double>(
            std::count_if(from, to, [](const Figure& figure) { return figure.first; }));
        const auto all = static_cast<double>(to - from);
        // Of the pairs with an equal figure each counts half.
        ranked.u += ours * (below + (all - ours) / 2);
        ranked.ties += all * all * all - all;
        below += all - ours;
        from = to;
    }
    return ranked;
}

// How probable a u of limit or below is, without ties, for limit up to n * m / 2. The numbers of
// orders with u = 0, 1, 2, ... are the coefficients of the product of (1 - q^(n+i)) / (1 - q^i) for
// i = 1 to m. They go up to 1e59, yet the doubles stay within 1e-13 of the whole numbers up to 100
// by 100, as each factor leaves them positive.
double ProbabilityUpTo(size_t limit, size_t n, size_t m)
{
    std::vector<double> orders(limit + 1);
    orders[0] = 1;
    double all = 1;
    for (size_t i = 1; i <= m; i++) {
        for (size_t u = limit; u >= n + i; u--)
            orders[u] -= orders[u - n - i];
        for (size_t u = i; u <= limit; u++)
            orders[u] += orders[u - i];
        all *= static_cast<double>(n + i) / static_cast<double>(i);
    }
    return std::accumulate(orders.begin(), orders.end(), 0.0) / all;
}

double NormalTails(double distance, double n, double m, double ties)
{
    const double all = n + m;
    const double variance = n * m / 12 * (all + 1 - ties / (all * (all - 1)));
    if (variance <= 0)
        return 1; // all are equal
    // Both tails at once: erfc(z / sqrt(2)) is twice the normal tail above z. The 0.5 is the
    // correction for continuity.
    return std::erfc((distance - 0.5) / std::sqrt(2 * variance));
}

} // namespace

std::optional<RankTest> MannWhitney(const std::vector<double>& a, const std::vector<double>& b)
{
    // Nothing is below a NaN or above it, so std::sort could do anything with one.
    const auto isNan = [](double value) { return std::isnan(value); };
    if (a.empty() || b.empty() || std::any_of(a.begin(), a.end(), isNan)
        || std::any_of(b.begin(), b.end(), isNan))
        return {};
    const auto n = static_cast<double>(a.size());
    const auto m = static_cast<double>(b.size());
    const auto [u, ties] = Rank(a, b);
    // The distribution of u is symmetric, so that the lower end stands for both.
    const double lower = std::min(u, n * m - u);
    const bool exact = ties == 0 && std::max(a.size(), b.size()) <= kLargestExact;
    const double p = exact ? 2 * ProbabilityUpTo(static_cast<size_t>(lower), a.size(), b.size())
                           : NormalTails(n * m / 2 - lower, n, m, ties);
    return RankTest { u, std::min(p, 1.0) };
}

double SmallestReachable(int n, int m)
{
    if (n <= 0 || m <= 0)
        return 1;
    double p = 2; // over the number of ways to choose n of n + m
    for (int i = 1; i <= n; i++)
        p *= static_cast<double>(i) / (m + i);
    return p;
}

std::vector<double> Holm(const std::vector<double>& ps)
{
    std::vector<size_t> order;
    for (size_t i = 0; i < ps.size(); i++) {
        if (!std::isnan(ps[i]))
            order.push_back(i);
    }
    std::sort(order.begin(), order.end(), [&](size_t i, size_t j) { return ps[i] < ps[j]; });
    std::vector<double> adjusted = ps;
    double greatest = 0;
    for (size_t k = 0; k < order.size(); k++) {
        // Never below the ones before: where a step fails all further ones fail with it.
        greatest = std::max(greatest, static_cast<double>(order.size() - k) * ps[order[k]]);
        adjusted[order[k]] = std::min(greatest, 1.0);
    }
    return adjusted;
}

} // namespace statistics
