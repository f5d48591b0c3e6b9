// What more processors bring: the speed-up and the efficiency of measured machines in each test, by
// processor count.
#pragma once

#include "results/RunComparison.h"

struct ScalingPoint {
    int32 processors = 0;
    double speedUp = 0; // times the speed with one processor
    bool isDoubtful = false; // shared, two speeds or unsteady

    // 1 where each processor brings as much as the first.
    [[nodiscard]] double Efficiency() const { return speedUp / processors; }
};

// What one machine showed in one test, from the fewest processors up. Where one processor was not
// measured the fewest stand on the ideal line. Source: Eager, Zahorjan and Lazowska, "Speedup
// versus efficiency in parallel systems", IEEE Transactions on Computers 38 (1989), p. 408.
struct ScalingCurve {
    size_t machine = 0; // its place among the machines
    std::vector<ScalingPoint> points; // two at least
};

struct TestScaling {
    const TestType* test = nullptr;
    std::vector<ScalingCurve> curves; // one at least
};

// For each wanted test, as the catalogue has them, the machines that have it at two processor
// counts or more, none a million times as fast as another. Of the others there is nothing: neither
// a curve nor, if no machine is left, the test.
[[nodiscard]] std::vector<TestScaling> ScalingOf(
    const std::vector<MeasuredMachine>& machines, const TestFilter& isWanted);
