#include "ui/ChartScale.h"

#include <algorithm>
#include <cmath>
#include <string>

ChartScale ChartScale::For(double greatest)
{
    constexpr double kMost = 1'999'999'999; // of which the next step is still an int32
    const auto rounded = static_cast<int32>(std::lround(std::clamp(greatest, 0.0, kMost)));
    const size_t digits = std::to_string(rounded).size();
    ChartScale scale;
    scale.step = 10;
    for (size_t i = 3; i < digits; i++)
        scale.step *= 10;
    scale.maxScale = static_cast<float>((scale.step + rounded) / scale.step * scale.step);
    return scale;
}

float ChartScale::XFor(double value, float left, float right) const
{
    return static_cast<float>((right - left) * value / maxScale + left);
}
