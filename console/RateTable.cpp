#include "console/RateTable.h"

#include "console/TextColumns.h"

#include <algorithm>

namespace {

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
