// kernels [ROUNDS [TEST]]: do the groups measure the machine, or the program around them too? Each
// group's rate beside that of a bare loop of the same work: alternately, in one process, medians.
// Beside the medians' ratio that of the best, which other programs' load disturbs less. Status 1 if
// a group's median reaches less than 97 % of its loop's.
#include "BareLoops.h"
#include "engine/Benchmark.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

constexpr double kSieveSeconds = 5;

struct Row {
    const char* metric;
    void (Benchmark::*run)();
    double (*bareRate)();
};

template <void (*loop)(long)>
double RateOf(long rounds, double units)
{
    const auto start = std::chrono::steady_clock::now();
    loop(rounds);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - start;
    return units / seconds.count();
}

const Row kRows[] = {
    { "Strings Copy", &Benchmark::RunStrings, [] { return RateOf<bare::CopyText>(3000000, 126); } },
    { "Strings Compare", &Benchmark::RunStrings,
        [] { return RateOf<bare::CompareText>(3000000, 126); } },
    { "Memory", &Benchmark::RunMemory, [] { return RateOf<bare::AllocateAndClear>(400000, 195); } },
    { "Ackerman", &Benchmark::RunAckerman,
        [] { return RateOf<bare::EvaluateAckerman>(6000, 6000); } },
    { "Sieve", &Benchmark::RunSieve,
        [] { return bare::SievePasses(kSieveSeconds) / kSieveSeconds; } },
};

double GroupRate(Benchmark& benchmark, const Row& row)
{
    benchmark.results.Reset();
    (benchmark.*row.run)();
    return benchmark.results.NewTest(row.metric, 0)->Rate(0);
}

double Median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double Best(const std::vector<double>& values)
{
    return *std::max_element(values.begin(), values.end());
}

bool MeasureRow(Benchmark& benchmark, const Row& row, int rounds)
{
    if (row.run == &Benchmark::RunSieve) // one takes as long as a hundred of the others
        rounds = std::max(5, rounds / 20);
    std::vector<double> group;
    std::vector<double> loop;
    for (int round = 0; round < rounds; round++) {
        group.push_back(GroupRate(benchmark, row));
        loop.push_back(row.bareRate());
    }
    const double ratio = Median(group) / Median(loop);
    printf("%-18s%14.1f%14.1f%9.3f%9.3f\n", row.metric, Median(group), Median(loop), ratio,
        Best(group) / Best(loop));
    fflush(stdout);
    return ratio >= 0.97;
}

} // namespace

int main(int argc, char** argv)
{
    const int rounds = argc > 1 ? std::max(1, atoi(argv[1])) : 101;
    Benchmark benchmark;
    bool keptUp = true;
    printf("medians of %d\n%-18s%14s%14s%9s%9s\n", rounds, "test", "group", "bare loop", "ratio",
        "best");
    for (const Row& row : kRows)
        if (argc < 3 || strcmp(argv[2], row.metric) == 0)
            keptUp &= MeasureRow(benchmark, row, rounds);
    return keptUp ? 0 : 1;
}
