#include "console/RatesAsText.h"

#include <algorithm>

namespace {

// The text of a LibString, "" where it has no buffer.
std::string TextOf(const LibString& text)
{
    const char* bytes = text;
    return bytes ? bytes : "";
}

// The text with blanks behind or before it up to width; a longer one as it is.
std::string PadRight(std::string text, size_t width)
{
    text.resize(std::max(width, text.size()), ' ');
    return text;
}

std::string PadLeft(const std::string& text, size_t width)
{
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

// The rate of a metric's slot; "-" where its pass left the test out.
std::string RateText(const Metric& metric, int slot)
{
    return metric.times[slot] == 0 ? "-" : TextOf(FormatRate(metric.Rate(slot)));
}

// The widths that the longest text of each kind needs.
struct Widths {
    size_t test = std::string("Test").size();
    size_t units = std::string("Units").size();
    size_t rate = 12;

    explicit Widths(const Results& results)
    {
        for (const Metric& metric : results) {
            test = std::max(test, TextOf(metric.description).size());
            units = std::max(units, TextOf(metric.units).size());
            for (int slot = 0; slot < metric.Slots(); slot++)
                rate = std::max(rate, RateText(metric, slot).size() + 2);
        }
    }
};

} // namespace

std::string RateTable(const Results& results)
{
    const Widths widths(results);
    std::string table = PadRight("Test", widths.test + 2) + PadRight("Units", widths.units);
    for (int count = results.nbrCpus; count > 0; count--)
        table += PadLeft(std::to_string(count) + " CPU", widths.rate);
    table += "\n";
    for (const Metric& metric : results) {
        table += PadRight(TextOf(metric.description), widths.test + 2)
            + PadRight(TextOf(metric.units), widths.units);
        for (int slot = 0; slot < metric.Slots(); slot++)
            table += PadLeft(RateText(metric, slot), widths.rate);
        table += "\n";
    }
    return table;
}
