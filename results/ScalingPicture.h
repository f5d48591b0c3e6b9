// What more processors bring, as a picture in a file: for each test the speed-up and the efficiency
// of measured machines by processor count, beside the ideal line.
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

// Draws them as SVG, PNG or PDF, as path ends, on a white ground: two plots for each test, side by
// side, large for one test and in two columns for several, whose scales double where the most
// processors are over 16 times the fewest. Machines are told apart by colour and
// marker, 24 of them at most: a line says how many more there are. Needs no display. Returns why it
// could not be written, and what was there stays; else an empty text.
[[nodiscard]] std::string WriteScalingPicture(const char* path,
    const std::vector<MeasuredMachine>& machines, const std::vector<TestScaling>& tests);
