#include "results/RunFile.h"

#include "results/RunFields.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <ranges>

namespace {

// The keys stay in the order in which they are written, so that files can be compared line by line.
using Json = nlohmann::ordered_json;

struct Writer {
    static constexpr bool kReads = false;

    template <class T>
    void Field(const char* key, const T& field, runfile::Limits = {})
    {
        (*json)[key] = Value(field);
    }

    template <class T>
    void FieldOr(
        const char* key, const T& field, std::type_identity_t<T> unknown, runfile::Limits = {})
    {
        // What is not known is null, whatever number stands for it in the program.
        (*json)[key] = field == unknown ? Json() : Value(field);
    }

    static Json Value(const std::string& text) { return text.empty() ? Json() : Json(text); }
    static Json Value(const TestType* test) { return test->id; }
    static Json Value(CoreKind kind)
    {
        return kind == CoreKind::kPerformance ? "performance" : "efficiency";
    }

    template <class T>
    static Json Value(const std::optional<T>& field)
    {
        return field ? Value(*field) : Json();
    }

    template <class T>
    static Json Value(const T& field)
    {
        if constexpr (std::is_arithmetic_v<T>) {
            return field; // numbers that are none are written as null
        } else if constexpr (std::ranges::range<T>) {
            Json list = Json::array();
            for (const auto& each : field)
                list.push_back(Value(each));
            return list;
        } else {
            Json object = Json::object();
            Writer { &object }.Write(field);
            return object;
        }
    }

    template <class T>
    void Write(const T& field)
    {
        runfile::Fields(*this, field);
    }

    Json* json;
};

Json SpeedAsJson(const statistics::Speed& speed)
{
    return { { "median_seconds", speed.median }, { "share", speed.share } };
}

Json MarksAsJson(const statistics::Marks& marks)
{
    Json twoSpeeds;
    if (marks.twoSpeeds) {
        twoSpeeds["fast"] = SpeedAsJson(marks.twoSpeeds->fast);
        twoSpeeds["slow"] = SpeedAsJson(marks.twoSpeeds->slow);
    }
    return { { "shared", marks.shared }, { "two_speeds", twoSpeeds },
        { "unsteady", marks.unsteady }, { "few", marks.few }, { "wide", marks.wide } };
}

Json FiguresAsJson(const Series& series, const Figures& figures)
{
    const statistics::Summary& summary = figures.summary;
    Json interval;
    if (summary.interval) {
        interval["low_seconds"] = summary.interval->low;
        interval["high_seconds"] = summary.interval->high;
        interval["coverage"] = summary.interval->coverage;
    }
    return { { "rate", RateOf(series, summary.estimate) }, { "n", summary.n },
        { "shared_spans", figures.shared }, { "estimate_seconds", summary.estimate },
        { "interval", interval }, { "minimum_seconds", summary.minimum },
        { "median_seconds", summary.median }, { "maximum_seconds", summary.maximum },
        { "variation", summary.variation ? Json(*summary.variation) : Json() } };
}

// Work and joules of all spans; null if the energy of one is not known.
void AddEnergy(const Series& series, Json& json)
{
    double joules = 0;
    double work = 0;
    bool isKnown = !series.spans.empty();
    for (const Span& span : series.spans) {
        isKnown = isKnown && span.joules;
        joules += span.joules.value_or(0);
        work += span.work;
    }
    json["joules"] = isKnown ? Json(joules) : Json();
    json["work_per_joule"] = isKnown && joules > 0 && work > 0 ? Json(work / joules) : Json();
}

Json SeriesAsJson(const Series& series, const Probe& best)
{
    const auto figures = series.undone.empty() ? FiguresOf(series, best) : std::nullopt;
    const TestType& test = *series.test;
    Json json { { "test", test.id }, { "name", test.name }, { "units", test.units },
        { "better", test.better == Better::kMore ? "more" : "less" },
        { "processors", series.processors } };
    json["work"] = series.spans.empty() ? Json() : Json(series.spans.front().work);
    json["figures"] = figures ? FiguresAsJson(series, *figures) : Json();
    json["marks"] = figures ? MarksAsJson(figures->marks) : Json();
    AddEnergy(series, json);
    // Adds undone and spans. The test and the count, written once more, keep their places.
    Writer { &json }.Write(series);
    for (size_t i = 0; i < series.spans.size(); i++)
        json["spans"][i]["shared"] = IsShared(series.spans[i], best);
    return json;
}

// How the machine's other processors were kept out of a pass.
Json KeptOut(const PassRecord& pass, size_t all)
{
    const size_t others = all - std::min(all, pass.used.size());
    if (all == 0 || pass.used.empty())
        return nullptr;
    if (others == 0)
        return "none to keep out";
    if (pass.off.size() >= others)
        return "switched off";
    return pass.off.empty() ? "bound to the used" : "some switched off";
}

Json PassAsJson(const PassRecord& pass, size_t processors)
{
    const MachineChange change = ChangeBetween(pass.before, pass.after);
    Json json { { "processors", pass.processors }, { "kept_out", KeptOut(pass, processors) },
        { "stolen", Writer::Value(change.stolen) },
        { "throttles", Writer::Value(change.throttles) },
        { "joules", Writer::Value(change.joules) },
        { "asleep_seconds", Writer::Value(change.secondsAsleep) },
        { "sleeps", Writer::Value(change.sleeps) } };
    Writer { &json }.Write(pass);
    return json;
}

Json JsonOf(const RunRecord& record)
{
    Json json { { "schema", kRunSchema } };
    Writer { &json }.Write(record);
    // In place of the bare fields, with what is worked out of them. That is for other programs: our
    // own reader takes the bare fields alone.
    for (size_t i = 0; i < record.passes.size(); i++)
        json["passes"][i] = PassAsJson(record.passes[i], record.details.processors.size());
    for (size_t i = 0; i < record.series.size(); i++)
        json["series"][i] = SeriesAsJson(record.series[i], record.bestProbe);
    return json;
}

// Numbers with as many digits as tell them from all others, and a point whatever the locale.
std::string Dump(const Json& json)
{
    // What is no UTF-8 is replaced, as the library would throw: a name from the system may be any
    // bytes.
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

// A key a line, and a line for each pass and each series: small, and for the eye and diff too.
std::string RunAsJson(const RunRecord& record)
{
    const Json json = JsonOf(record);
    std::string text;
    for (const auto& [key, value] : json.items()) {
        text += (text.empty() ? "{\n\"" : ",\n\"") + key + "\": ";
        if (!value.is_array() || value.empty()) {
            text += Dump(value);
            continue;
        }
        for (size_t i = 0; i < value.size(); i++)
            text += (i == 0 ? "[\n" : ",\n") + Dump(value[i]);
        text += "\n]";
    }
    return text + "\n}\n";
}

std::string SpanAsJson(const Series& series)
{
    Series latest { series.test, series.processors, {}, series.undone };
    // Of a test whose work was not done the reason alone goes on: it has no time that counts.
    if (!series.spans.empty() && series.undone.empty())
        latest.spans.push_back(series.spans.back());
    return Dump(Writer::Value(latest));
}

namespace {

struct Column {
    const char* name;
    const char* place; // in the JSON of a series
};

// As docs/run-format.md lists them, after the label.
constexpr Column kColumns[] = {
    { "test", "/test" },
    { "name", "/name" },
    { "units", "/units" },
    { "better", "/better" },
    { "processors", "/processors" },
    { "rate", "/figures/rate" },
    { "n", "/figures/n" },
    { "estimate_seconds", "/figures/estimate_seconds" },
    { "interval_low_seconds", "/figures/interval/low_seconds" },
    { "interval_high_seconds", "/figures/interval/high_seconds" },
    { "interval_coverage", "/figures/interval/coverage" },
    { "minimum_seconds", "/figures/minimum_seconds" },
    { "median_seconds", "/figures/median_seconds" },
    { "maximum_seconds", "/figures/maximum_seconds" },
    { "variation", "/figures/variation" },
    { "shared_spans", "/figures/shared_spans" },
    { "joules", "/joules" },
    { "work_per_joule", "/work_per_joule" },
    { "mark_shared", "/marks/shared" },
    { "mark_two_speeds", "/marks/two_speeds" },
    { "mark_unsteady", "/marks/unsteady" },
    { "mark_few", "/marks/few" },
    { "mark_wide", "/marks/wide" },
    { "fast_median_seconds", "/marks/two_speeds/fast/median_seconds" },
    { "fast_share", "/marks/two_speeds/fast/share" },
    { "slow_median_seconds", "/marks/two_speeds/slow/median_seconds" },
    { "slow_share", "/marks/two_speeds/slow/share" },
    { "undone", "/undone" },
};

std::string Cell(const Json& series, const char* place)
{
    const Json::json_pointer pointer(place);
    const Json value = series.contains(pointer) ? series.at(pointer) : Json();
    if (value.is_string())
        return value.get<std::string>();
    // This mark is an object or null, the column says whether it is set. Where nothing was measured
    // there are no marks, and the cell is empty as those of the others.
    if (pointer == Json::json_pointer("/marks/two_speeds") && !series["marks"].is_null())
        return value.is_null() ? "false" : "true";
    return value.is_null() ? "" : Dump(value);
}

} // namespace

std::string TableCell(std::string cell, char separator)
{
    if (separator == '\t') { // knows no quotes
        std::replace_if(
            cell.begin(), cell.end(), [](char c) { return c == '\t' || c == '\n' || c == '\r'; },
            ' ');
        return cell;
    }
    if (cell.find_first_of("\",\r\n") == std::string::npos)
        return cell;
    // RFC 4180 doubles a quote. The step of 2 goes past both, or it would never end.
    for (size_t at = 0; (at = cell.find('"', at)) != std::string::npos; at += 2)
        cell.insert(at, 1, '"');
    return '"' + cell + '"';
}

std::string RunAsTable(const RunRecord& record, char separator)
{
    std::string text = "label";
    for (const Column& column : kColumns)
        (text += separator) += column.name;
    text += '\n';
    for (const Series& series : record.series) {
        const Json json = SeriesAsJson(series, record.bestProbe);
        text += TableCell(record.label, separator);
        for (const Column& column : kColumns)
            (text += separator) += TableCell(Cell(json, column.place), separator);
        text += '\n';
    }
    return text;
}
