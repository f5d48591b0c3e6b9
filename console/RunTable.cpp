#include "console/ResultText.h"
#include "foundation/PlainText.h"
#include "foundation/TextColumns.h"
#include "results/RunFile.h"

#include <algorithm>
#include <vector>

namespace {

using Row = std::vector<std::string>;

std::string Percent(double share)
{
    return LibFixedText(share * 100, 1);
}

std::string RateText(const Series& series, const RunRecord& record)
{
    const auto figures = series.undone.empty() ? FiguresOf(series, record.bestProbe) : std::nullopt;
    return figures ? LibFixedText(RateOf(series, figures->summary.estimate), 1) : "-";
}

std::string WideTable(const RunRecord& record)
{
    constexpr size_t kRateWidth = 10;
    std::vector<Row> rows { { "Test", "Units" } };
    for (const int32 count : record.plan.counts)
        rows.front().push_back(std::to_string(count) + " CPU");
    std::vector<const TestType*> tests;
    for (const Series& series : record.series) {
        // A test has a series for each count, and here one line.
        if (std::find(tests.begin(), tests.end(), series.test) == tests.end())
            tests.push_back(series.test);
    }
    for (const TestType* test : tests) {
        Row& row = rows.emplace_back(Row { test->name, test->units });
        for (const int32 count : record.plan.counts) {
            const Series* series = record.Find(*test, count);
            row.push_back(series ? RateText(*series, record) : "-");
        }
    }
    const size_t counts = record.plan.counts.size();
    LibTextColumns columns("<<" + std::string(counts, '>'));
    Row room(2);
    room.resize(2 + counts, std::string(kRateWidth, ' '));
    columns.Widen(room);
    return LibColumnsText(columns, rows);
}

Row RowOf(const Series& series, const RunRecord& record)
{
    const auto figures = series.undone.empty() ? FiguresOf(series, record.bestProbe) : std::nullopt;
    Row row { series.test->name, series.test->units };
    row.push_back(std::to_string(series.processors));
    row.push_back(RateText(series, record));
    if (!figures) {
        row.insert(row.end(), { "-", "-", "0" });
        row.push_back(series.undone.empty() ? "" : "not done: " + series.undone);
        return row;
    }
    const statistics::Summary& summary = figures->summary;
    const auto& interval = summary.interval;
    row.push_back(
        interval ? Percent((interval->high - interval->low) / 2 / summary.estimate) : "-");
    row.push_back(summary.variation ? Percent(*summary.variation) : "-");
    row.push_back(std::to_string(summary.n));
    row.push_back(MarksText(figures->marks,
        " (" + std::to_string(figures->shared) + " of " + std::to_string(figures->summary.n)
            + ")"));
    return row;
}

} // namespace

std::string FiguresTable(const RunRecord& record)
{
    std::vector<Row> rows { { "Test", "Units", "CPUs", "Rate", "+- %", "CV %", "n", "Marks" } };
    for (const Series& series : record.series)
        rows.push_back(RowOf(series, record));
    return LibColumnsText(LibTextColumns("<<>>>>><"), rows);
}

std::string RunTable(const RunRecord& record)
{
    const bool isRepeated = record.plan.repeats > 1 || record.plan.untilPercent;
    return isRepeated ? FiguresTable(record) : WideTable(record);
}

std::string RunText(const RunRecord& record, TextFormat format)
{
    switch (format) {
        case TextFormat::kCsv: return RunAsTable(record, ',');
        case TextFormat::kTsv: return RunAsTable(record, '\t');
        case TextFormat::kJson: return RunAsJson(record);
        case TextFormat::kTable: break;
    }
    return RunTable(record);
}

std::string WideTests(const RunRecord& record)
{
    std::string text;
    for (const Series& series : record.series) {
        if (!series.undone.empty()
            || IsNarrow(series, record.bestProbe, record.plan.untilPercent.value()))
            continue;
        text += (text.empty() ? "" : ", ") + std::string(series.test->name) + " ("
            + std::to_string(series.processors) + " CPU)";
    }
    return text;
}
