#include "results/ChartText.h"

#include "foundation/PlainText.h"
#include "foundation/TextColumns.h"
#include "foundation/Utf8.h"
#include "results/MachineFiles.h"
#include "results/TestCatalogue.h"

#include <algorithm>
#include <vector>

namespace {

using Row = std::vector<std::string>;

std::string Printable(const char* text)
{
    return LibPrintable(text);
}

std::string UnitsOf(const Metric& metric)
{
    const char* units = metric.units;
    return Printable(units && *units ? units : MetricUnits(metric.index));
}

// At a processor count; 0 where it was not measured.
double RateAt(const Metric* metric, int32 count)
{
    return metric && count <= metric->Slots() ? metric->Rate(metric->Slots() - count) : 0;
}

// Of counts from the greatest one down.
void AppendRates(Row& row, const Metric* metric, int32 greatest)
{
    for (int32 count = greatest; count > 0; count--) {
        const double rate = RateAt(metric, count);
        row.push_back(rate > 0 ? LibFixedText(rate, 1) : "-");
    }
}

void AppendCounts(Row& row, int32 greatest)
{
    for (int32 count = greatest; count > 0; count--)
        row.push_back(std::to_string(count) + " CPU");
}

// The first columns stand left, those of numbers right.
std::string Aligned(const std::vector<Row>& rows, size_t leftColumns)
{
    std::string sides(rows.front().size(), '>');
    sides.replace(0, leftColumns, leftColumns, '<');
    return LibColumnsText(LibTextColumns(sides), rows);
}

std::string PercentOf(double rate, double base)
{
    return rate > 0 && base > 0 ? LibFixedText(100 * rate / base, 1) : "-";
}

} // namespace

std::string ResultsAsText(const Results& run)
{
    int32 greatest = 1;
    for (const Metric& metric : run)
        greatest = std::max<int32>(greatest, metric.Slots());
    std::vector<Row> rows { { "Test", "Units" } };
    AppendCounts(rows.front(), greatest);
    for (const Metric& metric : run) {
        Row& row = rows.emplace_back(Row { Printable(metric.description), UnitsOf(metric) });
        AppendRates(row, &metric, greatest);
    }
    return Printable(run.description) + "\n" + Aligned(rows, 2);
}

std::string ComparisonAsText(Comparison& comparison)
{
    const std::vector<Results*>& machines = comparison.InOrder();
    int32 greatest = 0;
    const Metric* shown = nullptr;
    for (const Results* machine : machines) {
        const Metric* metric = machine->Current();
        shown = shown ? shown : metric;
        greatest = std::max<int32>(greatest, metric ? metric->Slots() : 0);
    }
    if (!shown)
        return "";
    const double base = comparison.BaseRate(*shown);
    std::vector<Row> rows { { "Machine" } };
    AppendCounts(rows.front(), greatest);
    if (base > 0)
        rows.front().push_back("Percent");
    for (const Results* machine : machines) {
        const Metric* metric = machine->Current();
        Row& row = rows.emplace_back(Row { Printable(machine->description) });
        AppendRates(row, metric, greatest);
        if (base > 0)
            row.push_back(PercentOf(metric ? metric->BestRate() : 0, base));
    }
    std::string title = Printable(shown->description) + " (" + UnitsOf(*shown) + ")";
    if (base > 0)
        title += ", percent of " + Printable(comparison.selected->description);
    return title + "\n" + Aligned(rows, 1);
}

std::string MachineAsText(const Comparison& comparison, const Results& machine)
{
    std::string text = Printable(machine.description);
    if (const Metric* metric = machine.Current()) {
        const double base = comparison.BaseRate(*metric);
        const double one = RateAt(metric, 1);
        for (int32 count = metric->Slots(); count > 0; count--) {
            const double rate = RateAt(metric, count);
            if (rate <= 0)
                continue;
            text += "\n" + std::to_string(count) + " CPU: " + LibFixedText(rate, 1) + " "
                + UnitsOf(*metric);
            if (one > 0 && count > 1)
                text += ", " + LibFixedText(rate / one, 2) + " times one processor";
            if (base > 0)
                text += ", " + PercentOf(rate, base) + " percent of the selection";
        }
    }
    if (machine.current)
        return text + "\nThis machine" + TrueName(ReadMachineDetails());
    text += machine.trueName;
    if (!machine.origin.empty())
        text += "\nRead from " + Printable(machine.origin.c_str());
    return text;
}

std::string UnitAsText(const Metric& metric)
{
    const TestType* type = FindTestType(metric.index);
    if (!type)
        return "";
    return type->better == Better::kLess ? "Seconds: less is better"
                                         : "Work in a second: more is better";
}
