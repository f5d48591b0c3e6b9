// kernels [PAIRS [TEST]]: do the groups measure the machine, or the program around them too? Each
// kernel's rate beside that of a bare loop of the same work, in one process: blocks of some
// milliseconds, the two in turn, since a machine may change its speed from second to second. The
// median of the pairs' ratios counts, status 1 if one is too low.
//
// kernels --count TEST kernel|loop ROUNDS...: does only those, one by one, for a tool that counts
// the instructions of each DoRounds().
#include "Rows.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

using kernels::Row;
using Clock = std::chrono::steady_clock;

constexpr double kBlockSeconds = 0.005;
// A slow row ends after this time, but not before so many pairs.
constexpr double kRowSeconds = 20;
constexpr int kLeastPairs = 21;

// The rounds that take the loop as long as a block.
long RoundsOfABlock(const Row& row)
{
    long rounds = row.leastRounds;
    while (row.loop(rounds) < kBlockSeconds && rounds < 100000000)
        rounds *= 2;
    return rounds;
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

bool Compare(const Row& row, int pairs)
{
    const long rounds = RoundsOfABlock(row);
    std::vector<double> kernelRates;
    std::vector<double> ratios;
    const auto end = Clock::now() + std::chrono::duration<double>(kRowSeconds);
    for (int pair = 0; pair < pairs; pair++) {
        if (pair >= kLeastPairs && Clock::now() > end)
            break;
        const bool loopFirst = pair % 2 == 1;
        double loop = loopFirst ? row.loop(rounds) : 0;
        const double kernel = row.kernel(rounds);
        if (!loopFirst)
            loop = row.loop(rounds);
        kernelRates.push_back(static_cast<double>(rounds) / kernel);
        ratios.push_back(loop / kernel);
    }
    printf("%-20s%16.1f%9.3f%7zu\n", row.name, Median(kernelRates), Median(ratios), ratios.size());
    fflush(stdout);
    return Median(ratios) >= row.leastRatio;
}

int CompareRows(int pairs, const char* only)
{
    bool keptUp = true;
    printf("%-20s%16s%9s%7s\n", "test", "rounds/second", "ratio", "pairs");
    for (const Row& row : kernels::Rows())
        if (!only || strcmp(only, row.name) == 0)
            keptUp &= Compare(row, pairs);
    return keptUp ? 0 : 1;
}

[[gnu::noinline]] int DoRounds(const char* name, const char* which, long rounds)
{
    for (const Row& row : kernels::Rows())
        if (strcmp(name, row.name) == 0)
            return strcmp(which, "loop") == 0 ? row.loop(rounds) < 0 : row.kernel(rounds) < 0;
    fprintf(stderr, "no such test: <%s>\n", name);
    return 2;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc > 1 && strcmp(argv[1], "--count") == 0) {
        int status = 0;
        for (int i = 2; i + 2 < argc && status == 0; i += 3)
            status = DoRounds(argv[i], argv[i + 1], atol(argv[i + 2]));
        return status;
    }
    return CompareRows(argc > 1 ? std::max(1, atoi(argv[1])) : 201, argc > 2 ? argv[2] : nullptr);
}
