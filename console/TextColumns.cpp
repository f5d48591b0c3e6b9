#include "console/TextColumns.h"

#include "results/Metric.h"

#include <algorithm>

std::string PadRight(std::string text, size_t width)
{
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

std::string PadLeft(const std::string& text, size_t width)
{
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

std::string RateText(const Metric& metric, int slot)
{
    return metric.times[slot] == 0 ? "-" : TextOf(FormatRate(metric.Rate(slot)));
}

std::string TextOf(const LibString& text)
{
    const char* bytes = text;
    return bytes ? bytes : "";
}
