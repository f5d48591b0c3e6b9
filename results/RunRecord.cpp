#include "results/RunRecord.h"

#include "foundation/PlainText.h"

#include <algorithm>
#include <cmath>

namespace {

// How much longer the clock's loop took beside the span than at the best clock.
double Slowness(const Probe& probe, const Probe& best)
{
    return probe.clock > 0 && std::isfinite(best.clock) ? probe.clock / best.clock : 1;
}

double Slowness(const Span& span, const Probe& best)
{
    return (Slowness(span.probeBefore, best) + Slowness(span.probeAfter, best)) / 2;
}

bool IsShared(const Probe& probe, const Probe& best)
{
    // Where no best one is known it is infinite, and nothing is above it.
    return probe.core / Slowness(probe, best) > kSharedProbe * best.core;
}

// For the work of the first.
double ScaledSeconds(const Series& series, const Span& span)
{
    // Without work the figure is the time itself, and there is nothing to scale it by.
    const double work = series.spans.front().work;
    return work > 0 && span.work > 0 ? span.seconds * work / span.work : span.seconds;
}

// Below which so great a share of the probes lies.
std::optional<double> ProbeAt(const RunRecord& record, double Probe::*loop, double share)
{
    std::vector<double> probes;
    for (const Series& series : record.series) {
        for (const Span& span : series.spans) {
            for (const Probe& probe : { span.probeBefore, span.probeAfter }) {
                if (probe.*loop > 0)
                    probes.push_back(probe.*loop);
            }
        }
    }
    if (probes.size() < kLeastProbes)
        return std::nullopt;
    const auto place =
        probes.begin() + static_cast<ptrdiff_t>(share * static_cast<double>(probes.size()));
    std::nth_element(probes.begin(), place, probes.end());
    return *place;
}

std::string SpeedText(const statistics::Speed& speed)
{
    return LibFixedText(speed.median * 1000, 2) + " ms (" + LibFixedText(speed.share * 100, 0)
        + " %)";
}

} // namespace

bool IsShared(const Span& span, const Probe& best)
{
    return IsShared(span.probeBefore, best) || IsShared(span.probeAfter, best)
        || span.waited > kSharedWait * span.seconds;
}

std::vector<double> TimesOf(const Series& series)
{
    std::vector<double> times;
    for (const Span& span : series.spans)
        times.push_back(ScaledSeconds(series, span));
    return times;
}

std::vector<double> CleanTimesOf(const Series& series, const Probe& best)
{
    std::vector<double> times;
    for (const Span& span : series.spans) {
        if (IsShared(span, best) || span.isThrottled)
            continue;
        // One span is what the stopwatch said, like those of the window.
        const double slowness = series.spans.size() > 1 ? Slowness(span, best) : 1;
        times.push_back(ScaledSeconds(series, span) / slowness);
    }
    return times;
}

std::optional<Figures> FiguresOf(const Series& series, const Probe& best)
{
    const std::vector<double> all = TimesOf(series);
    const std::vector<double> clean = CleanTimesOf(series, best);
    // Six are enough to do without the others. With fewer the disturbed ones count too, as so few
    // say nothing, and the mark says so.
    const bool isClean = clean.size() >= statistics::kFewRepeats || clean.size() == all.size();
    const std::vector<double>& times = isClean ? clean : all;
    const auto summary = statistics::Summarize(times);
    if (!summary)
        return std::nullopt;
    Figures figures { *summary, statistics::MarksOf(times),
        static_cast<int32>(all.size() - clean.size()) };
    figures.marks.shared = !isClean;
    // Of some tests no sitting shows how far the next one lies away.
    if (!figures.marks.few && LeastDifference(*series.test) > kWideDifference)
        figures.marks.wide = true;
    return figures;
}

std::string MarksText(const statistics::Marks& marks, const std::string& ofShared)
{
    std::string text;
    const auto add = [&](bool isSet, const std::string& mark) {
        if (isSet)
            text += (text.empty() ? "" : ", ") + mark;
    };
    add(marks.shared, "shared" + ofShared);
    if (const auto& speeds = marks.twoSpeeds)
        add(true, "two speeds: " + SpeedText(speeds->fast) + " and " + SpeedText(speeds->slow));
    add(marks.unsteady, "unsteady");
    add(marks.few, "few");
    add(marks.wide, "wide");
    return text;
}

bool IsNarrow(const Series& series, const Probe& best, double percent)
{
    const auto figures = FiguresOf(series, best);
    // Few times, or disturbed ones, may lie close together by chance: then the repeats go on.
    if (!figures || figures->marks.shared || figures->marks.few || !figures->summary.interval)
        return false;
    const auto& [low, high, coverage] = *figures->summary.interval;
    return (high - low) / figures->summary.estimate * 100 < percent;
}

double RateOf(const Series& series, double seconds)
{
    const double work = series.spans.empty() ? 0 : series.spans.front().work;
    return work == 0 || seconds == 0 ? seconds : work / seconds;
}

Series& RunRecord::At(const TestType& test, int32 processors)
{
    for (Series& each : series) {
        if (each.test == &test && each.processors == processors)
            return each;
    }
    return series.emplace_back(Series { &test, processors, {}, "" });
}

const Series* RunRecord::Find(const TestType& test, int32 processors) const
{
    const auto found = std::find_if(series.begin(), series.end(),
        [&](const Series& each) { return each.test == &test && each.processors == processors; });
    return found != series.end() ? &*found : nullptr;
}

bool RunRecord::IsAnyUndone() const
{
    return std::any_of(
        series.begin(), series.end(), [](const Series& each) { return !each.undone.empty(); });
}

Probe SustainedProbe(const RunRecord& record)
{
    return { ProbeAt(record, &Probe::core, 0.25).value_or(kUnknownBest.core),
        ProbeAt(record, &Probe::clock, 0.25).value_or(kUnknownBest.clock) };
}

Probe BestOf(const Probe& a, const Probe& b)
{
    return { std::min(a.core, b.core), std::min(a.clock, b.clock) };
}

std::optional<double> MedianClock(const RunRecord& record)
{
    return ProbeAt(record, &Probe::clock, 0.5);
}
