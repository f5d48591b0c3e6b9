#include "console/ComparisonTable.h"

#include "console/TextColumns.h"
#include "foundation/Utf8.h"
#include "results/Metric.h"
#include "results/TestCatalogue.h"

#include <algorithm>
#include <vector>

namespace {

constexpr size_t kRateWidth = 12;
constexpr size_t kPercentWidth = 10;

// The tests that any machine has, each once; the metrics belong to the machines.
std::vector<const Metric*> AllTests(const ResultList& machines)
{
    std::vector<const Metric*> tests;
    for (const Results& machine : machines) {
        for (const Metric& metric : machine) {
            const auto isSame = [&metric](const Metric* test) { return *test == metric; };
            if (std::none_of(tests.begin(), tests.end(), isSame))
                tests.push_back(&metric);
        }
    }
    return tests;
}

std::string Percent(double rate, double base)
{
    return base > 0 ? TextOf(FormatRate(100 * rate / base)) : "-";
}

std::string Title(const Metric& test, int columns)
{
    std::string title = TextOf(test.description);
    if (const std::string units = MetricUnits(test.index); !units.empty())
        title += " (" + units + ")";
    title += "\n";
    for (int cpus = columns; cpus > 0; cpus--)
        title += PadLeft(std::to_string(cpus) + " CPU", kRateWidth);
    return title + PadLeft("Percent", kPercentWidth) + "  Machine\n";
}

std::string Line(const Results& machine, const Metric& metric, int columns, double base)
{
    std::string line(size_t(std::max(0, columns - metric.Slots())) * kRateWidth, ' ');
    for (int slot = 0; slot < metric.Slots(); slot++)
        line += PadLeft(RateText(metric, slot), kRateWidth);
    line += PadLeft(Percent(metric.BestRate(), base), kPercentWidth);
    return line + "  " + LibPrintable(machine.description) + "\n";
}

} // namespace

void PrintComparison(Comparison& comparison, FILE* out)
{
    ResultList& machines = comparison.machines;
    comparison.selected = machines.First();
    const int columns = std::min(machines.MaxNbrCpus(), kMostTimes);
    const char* gap = "";
    for (const Metric* test : AllTests(machines)) {
        fprintf(out, "%s%s", gap, Title(*test, columns).c_str());
        gap = "\n";
        const double base = comparison.BaseRate(*test);
        for (const Results& machine : machines) {
            if (const Metric* metric = machine.Find(*test))
                fputs(Line(machine, *metric, columns, base).c_str(), out);
        }
    }
}
