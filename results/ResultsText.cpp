#include "results/ResultsText.h"

#include "foundation/PlainText.h"
#include "results/Metric.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace {

struct Damage {
    std::string what;
};

void Check(bool isRight, const std::string& what)
{
    if (!isRight)
        throw Damage { what };
}

// Takes the text up to the separator, and the separator; all of it where there is none, and none of
// the text is left then.
std::string_view Take(std::string_view& text, char separator)
{
    const size_t end = text.find(separator);
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
    return part;
}

std::string_view TakeLine(std::string_view& text)
{
    std::string_view line = Take(text, '\n');
    if (line.ends_with('\r')) // mailed
        line.remove_suffix(1);
    return line;
}

// Whether all of the text is a number. from_chars knows no locale.
template <class Number>
bool Parse(std::string_view text, Number& number)
{
    const char* const end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && read == end;
}

bool ParseLength(std::string_view line, size_t& length)
{
    return Parse(line, length) && length > 0;
}

// The count of the first of so many times. More than the description says has a machine whose
// description does not tell: then the last time is that of one processor.
int32 FirstCount(std::string_view description, size_t times)
{
    const size_t at = description.find('(');
    const char digit = at + 1 < description.size() ? description[at + 1] : '0';
    const int32 said = LibIsDigit(digit) ? digit - '0' : 0;
    return std::max(said, static_cast<int32>(times));
}

// "id:cycles/time,time", of which id is taken already.
void ReadMetric(std::string_view id, std::string_view rest, RunRecord& run)
{
    int32 index = 0;
    Check(Parse(id, index), "has a metric without a number: <" + std::string(id) + ">");
    const TestType* test = FindTestType(index);
    const std::string name = test ? test->name : std::to_string(index);
    int32 cycles = 0;
    Check(rest.find('/') != rest.npos && Parse(Take(rest, '/'), cycles) && cycles >= 0,
        "has no amount of work for <" + name + ">");
    std::vector<double> times;
    while (!rest.empty()) {
        Check(times.size() < static_cast<size_t>(kMostTimes),
            "has more than eight times for <" + name + ">");
        const std::string_view time = Take(rest, ',');
        Check(Parse(time, times.emplace_back()) && std::isfinite(times.back()),
            "has a time for <" + name + "> that is none: <" + std::string(time) + ">");
    }
    // Not before its times are read: damage is told of tests that are not known, too.
    if (!test)
        return;
    int32 count = FirstCount(run.machine, times.size());
    for (const double seconds : times) {
        // 0 stands for a pass that left the test out. The count goes down all the same.
        if (seconds > 0) {
            Check(!run.Find(*test, count), "has <" + name + "> twice");
            Span& span = run.At(*test, count).spans.emplace_back();
            span.seconds = seconds;
            span.work = cycles;
        }
        count--;
    }
}

RunRecord ReadRecord(std::string_view record)
{
    const size_t end = record.rfind('\t');
    Check(end != record.npos, "has a record without a machine");
    RunRecord run;
    run.machine = record.substr(0, record.find('\t'));
    std::string_view metrics = record.substr(end + 1);
    while (!metrics.empty()) {
        Check(metrics.find(';') != metrics.npos, "has a metric that is cut short");
        std::string_view metric = Take(metrics, ';');
        const std::string_view id = Take(metric, ':');
        ReadMetric(id, metric, run);
    }
    return run;
}

std::vector<RunRecord> ReadRecords(std::string_view text)
{
    std::vector<RunRecord> runs;
    TakeLine(text); // the version: all are read alike
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        if (line.empty())
            continue;
        size_t length = 0;
        Check(ParseLength(line, length), "has a line that is no length of a record");
        const std::string_view record = TakeLine(text);
        Check(record.size() == length,
            "has a record of " + std::to_string(record.size()) + " characters where "
                + std::to_string(length) + " are said");
        runs.push_back(ReadRecord(record));
    }
    Check(!runs.empty(), "holds no results");
    return runs;
}

} // namespace

bool IsResultsText(const std::string& text)
{
    std::string_view rest = text;
    TakeLine(rest);
    size_t length = 0;
    return ParseLength(TakeLine(rest), length);
}

std::variant<std::vector<RunRecord>, std::string> RunsFromResults(const std::string& text)
{
    try {
        return ReadRecords(text);
    } catch (const Damage& damage) {
        return damage.what;
    }
}
