#include "console/RateTable.h"

#include "results/FormatRate.h"

#include <algorithm>

namespace {

constexpr size_t kRateWidth = 12;

std::string PadRight(std::string text, size_t width)
{
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

std::string PadLeft(const std::string& text, size_t width)
{
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

std::string Text(const LibString& text)
{
    const char* bytes = text;
    return bytes ? bytes : "";
}

std::string RateColumns(const Metric& metric)
{
    std::string columns;
    for (int slot = 0; slot < metric.Slots(); slot++)
        columns += PadLeft(Text(FormatRate(metric.Rate(slot))), kRateWidth);
    return columns;
}

} // namespace

std::string RateTable(Results& results)
{
    const std::string testTitle = "Test";
    const std::string unitsTitle = "Units";
    size_t testWidth = testTitle.size();
    size_t unitsWidth = unitsTitle.size();
    for (const Metric* metric = results.First(); metric; metric = results.Next()) {
        testWidth = std::max(testWidth, Text(metric->description).size());
        unitsWidth = std::max(unitsWidth, Text(metric->units).size());
    }

    std::string table = PadRight(testTitle, testWidth + 2) + PadRight(unitsTitle, unitsWidth);
    for (int count = results.nbrCpus; count > 0; count--)
        table += PadLeft(std::to_string(count) + " CPU", kRateWidth);
    table += "\n";
    for (const Metric* metric = results.First(); metric; metric = results.Next())
        table += PadRight(Text(metric->description), testWidth + 2)
            + PadRight(Text(metric->units), unitsWidth) + RateColumns(*metric) + "\n";
    return table;
}
