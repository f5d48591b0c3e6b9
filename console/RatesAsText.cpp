#include "console/RatesAsText.h"

#include "foundation/Utf8.h"
#include "results/TestCatalogue.h"

#include <algorithm>
#include <vector>

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
