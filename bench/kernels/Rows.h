// A test group's kernel and the bare loop of the same work.
#pragma once

#include <vector>

namespace kernels {

// Does that many rounds. Returns the seconds that they took, what prepares them left out.
using TimedRounds = double (*)(long);

struct Row {
    const char* name;
    double leastRatio; // of the kernel's rate to the loop's
    TimedRounds kernel;
    TimedRounds loop;
    long leastRounds = 1; // at a time: those of the group, where their number tells in the rate
};

const std::vector<Row>& Rows();

} // namespace kernels
