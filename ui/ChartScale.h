// The scale of the comparison chart, as plain arithmetic.
#pragma once

#include <SupportDefs.h>

struct ChartScale {
    float maxScale = 100; // what a bar over the whole width stands for
    int32 step = 10; // between two lines of the grid

    // The scale for values up to greatest: a round number above it, in at most a hundred steps.
    static ChartScale For(double greatest);
    // The x of a value, from left for 0 to right for maxScale.
    float XFor(double value, float left, float right) const;
};
