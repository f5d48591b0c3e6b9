#include "console/ResultText.h"
#include "foundation/PlainText.h"
#include "foundation/TextColumns.h"
#include "foundation/Utf8.h"
#include "results/RunFile.h"

#include <array>
#include <cmath>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>

namespace {

using Json = nlohmann::ordered_json;

// Readers go by it: it grows when a key goes or means another thing.
constexpr int kSchema = 1;

// For people.

// Four digits at least, so that seconds are told apart, and one after the point.
std::string RateText(const std::optional<double>& rate)
{
    if (!rate)
        return "-";
    int decimals = 1;
    for (double below = 100; decimals < 7 && *rate < below; below /= 10)
        decimals++;
    return LibFixedText(*rate, decimals);
}

std::string PercentText(const std::optional<double>& percent)
{
    return percent ? LibFixedText(*percent, 1) : "-";
}

using Cells = std::array<std::string, 9>;

const Cells kTitles = { "Test", "Units", "CPUs", "Baseline", "Rate", "Percent", "Verdict", "Why",
    "Machine" };
constexpr char kSides[] = "<<>>>><<<";

Cells CellsOf(const ComparedMachines& compared, const ComparedRow& row)
{
    return { row.test->name, row.test->units, std::to_string(row.processors),
        RateText(row.baseline.rate), RateText(row.candidate.rate), PercentText(row.percent),
        VerdictText(row.judgement.verdict), row.why.empty() ? "" : LibPrintable(row.why.c_str()),
        LibPrintable(compared.machines[row.machine].name.c_str()) };
}

// Smaller differences are those of any two sittings, and the rows do without them.
constexpr double kClockWorthALine = 2; // percent

void WriteClocks(const ComparedMachines& compared, FILE* out)
{
    const RunRecord& baseline = compared.machines[compared.baseline].record;
    for (const MeasuredMachine& machine : compared.machines) {
        const auto percent = ClockPercent(baseline, machine.record);
        if (percent && std::abs(*percent - 100) > kClockWorthALine)
            fprintf(out,
                "Clock of %s: %s percent of the baseline's, which rows without a mark leave out\n",
                LibPrintable(machine.name.c_str()).c_str(), LibFixedText(*percent, 1).c_str());
    }
}

void WriteTable(const ComparedMachines& compared, FILE* out)
{
    const MeasuredMachine& baseline = compared.machines[compared.baseline];
    fprintf(out, "Baseline: %s\n", LibPrintable(baseline.name.c_str()).c_str());
    WriteClocks(compared, out);
    fprintf(out, "\n");
    LibTextColumns columns(kSides);
    columns.Widen(kTitles);
    // The cells are made again below and not kept: there may be a million rows.
    for (const ComparedRow& row : compared.rows)
        columns.Widen(CellsOf(compared, row));
    fputs(columns.Line(kTitles).c_str(), out);
    for (const ComparedRow& row : compared.rows)
        fputs(columns.Line(CellsOf(compared, row)).c_str(), out);
}

// For programs.

Json NumberOrNull(const std::optional<double>& number)
{
    return number ? Json(*number) : Json();
}

struct Column {
    const char* name;
    Json (*value)(const ComparedMachines&, const ComparedRow&);
};

// Of CSV and TSV, and the keys of a row in JSON.
const Column kData[] = {
    { "test", [](auto&, auto& row) { return Json(row.test->id); } },
    { "name", [](auto&, auto& row) { return Json(row.test->name); } },
    { "units", [](auto&, auto& row) { return Json(row.test->units); } },
    { "better",
        [](auto&, auto& row) {
            return Json(row.test->better == Better::kMore ? "more" : "less");
        } },
    { "processors", [](auto&, auto& row) { return Json(row.processors); } },
    { "baseline",
        [](auto& compared, auto&) { return Json(compared.machines[compared.baseline].name); } },
    { "machine",
        [](auto& compared, auto& row) { return Json(compared.machines[row.machine].name); } },
    { "file", [](auto& compared, auto& row) { return Json(compared.machines[row.machine].path); } },
    { "baseline_rate", [](auto&, auto& row) { return NumberOrNull(row.baseline.rate); } },
    { "rate", [](auto&, auto& row) { return NumberOrNull(row.candidate.rate); } },
    { "percent", [](auto&, auto& row) { return NumberOrNull(row.percent); } },
    { "verdict", [](auto&, auto& row) { return Json(VerdictText(row.judgement.verdict)); } },
    { "why", [](auto&, auto& row) { return row.why.empty() ? Json() : Json(row.why); } },
    { "p", [](auto&, auto& row) { return NumberOrNull(row.judgement.p); } },
    { "baseline_n", [](auto&, auto& row) { return Json(row.baseline.n); } },
    { "n", [](auto&, auto& row) { return Json(row.candidate.n); } },
    { "baseline_marks", [](auto&, auto& row) { return Json(MarksText(row.baseline.marks)); } },
    { "marks", [](auto&, auto& row) { return Json(MarksText(row.candidate.marks)); } },
};

// Numbers with as many digits as tell them from all others, and a point whatever the locale.
std::string Dump(const Json& json)
{
    // A name that is no UTF-8 has marks in place of its bytes; dump() would throw else.
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string CellOf(const Json& value, char separator)
{
    if (value.is_null())
        return "";
    return value.is_string() ? TableCell(value.get<std::string>(), separator) : Dump(value);
}

void WriteCells(const ComparedMachines& compared, char separator, FILE* out)
{
    std::string line;
    for (const Column& column : kData)
        line += (line.empty() ? "" : std::string(1, separator)) + column.name;
    fprintf(out, "%s\n", line.c_str());
    for (const ComparedRow& row : compared.rows) {
        line.clear();
        for (const Column& column : kData) {
            if (&column != std::begin(kData))
                line += separator;
            line += CellOf(column.value(compared, row), separator);
        }
        line += '\n';
        fwrite(line.data(), 1, line.size(), out); // names from elsewhere may hold anything
    }
}

Json TextOrNull(const std::string& text)
{
    return text.empty() ? Json() : Json(text);
}

Json MachineAsJson(const MeasuredMachine& machine, const RunRecord& baseline)
{
    const RunRecord& record = machine.record;
    return { { "name", machine.name }, { "file", machine.path }, { "description", record.machine },
        { "label", TextOrNull(record.label) }, { "date", TextOrNull(machine.date) },
        { "version", TextOrNull(record.build.version) },
        { "compiler", TextOrNull(record.build.compiler) },
        { "clock_percent", NumberOrNull(ClockPercent(baseline, record)) } };
}

Json RowAsJson(const ComparedMachines& compared, const ComparedRow& row)
{
    Json json = Json::object();
    for (const Column& column : kData)
        json[column.name] = column.value(compared, row);
    return json;
}

// A machine, and a row, a line: small, and for the eye and diff too.
void WriteJson(const ComparedMachines& compared, FILE* out)
{
    const MeasuredMachine& baseline = compared.machines[compared.baseline];
    fprintf(out, "{\n\"comparison_schema\": %d,\n\"baseline\": %s,\n\"machines\": [", kSchema,
        Dump(Json(baseline.name)).c_str());
    const char* before = "\n";
    for (const MeasuredMachine& machine : compared.machines) {
        fprintf(out, "%s%s", before, Dump(MachineAsJson(machine, baseline.record)).c_str());
        before = ",\n";
    }
    fprintf(out, "\n],\n\"rows\": [");
    before = "\n";
    for (const ComparedRow& row : compared.rows) {
        fprintf(out, "%s%s", before, Dump(RowAsJson(compared, row)).c_str());
        before = ",\n";
    }
    fprintf(out, "\n]\n}\n");
}

} // namespace

void WriteComparison(const ComparedMachines& compared, TextFormat format, FILE* out)
{
    switch (format) {
        case TextFormat::kTable: WriteTable(compared, out); break;
        case TextFormat::kCsv: WriteCells(compared, ',', out); break;
        case TextFormat::kTsv: WriteCells(compared, '\t', out); break;
        case TextFormat::kJson: WriteJson(compared, out); break;
    }
}
