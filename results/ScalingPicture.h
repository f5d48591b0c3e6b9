// What more processors bring, as a picture in a file: for each test the speed-up and the efficiency
// of measured machines by processor count, beside the ideal line.
#pragma once

#include "results/Scaling.h"

// Draws them as SVG, PNG or PDF, as path ends, on a white ground: two plots for each test, side by
// side, large for one test and in two columns for several, whose scales double where the most
// processors are over 16 times the fewest. Machines are told apart by colour and
// marker, 24 of them at most: a line says how many more there are. Needs no display. Returns why it
// could not be written, and what was there stays; else an empty text.
[[nodiscard]] std::string WriteScalingPicture(const char* path,
    const std::vector<MeasuredMachine>& machines, const std::vector<TestScaling>& tests);
