#include "results/RunRecord.h"

#include <algorithm>
#include <cmath>

namespace {

// How much longer the span took than at the clock of the best probe.
double Slowness(const Span& span, double bestProbe)
{
    const bool isKnown = span.probeBefore > 0 && span.probeAfter > 0 && std::isfinite(bestProbe);
    return isKnown ? (span.probeBefore + span.probeAfter) / 2 / bestProbe : 1;
}

// For the work of the first.
double ScaledSeconds(const Series& series, const Span& span)
{
    // Without work the figure is the time itself, and there is nothing to scale it by.
    const double work = series.spans.front().work;
    return work > 0 && span.work > 0 ? span.seconds * work / span.work : span.seconds;
}

// Below which so great a share of the probes lies.
std::optional<double> ProbeAt(const RunRecord& record, double share)
{
    std::vector<double> probes;
    for (const Series& series : record.series) {
        for (const Span& span : series.spans) {
            for (const double probe : { span.probeBefore, span.probeAfter }) {
                if (probe > 0)
                    probes.push_back(probe);
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

} // namespace

bool IsShared(const Span& span, double bestProbe)
{
    // Where no probe is known the best one is infinite, and none is above it: then the wait decides
    // alone.
    return std::max(span.probeBefore, span.probeAfter) > kSharedProbe * bestProbe
        || span.waited > kSharedWait * span.seconds;
}

std::vector<double> TimesOf(const Series& series)
{
    std::vector<double> times;
    for (const Span& span : series.spans)
        times.push_back(ScaledSeconds(series, span));
    return times;
}

std::vector<double> CleanTimesOf(const Series& series, double bestProbe)
{
    std::vector<double> times;
    for (const Span& span : series.spans) {
        if (IsShared(span, bestProbe) || span.isThrottled)
            continue;
        // One span is what the stopwatch said, like those of the window.
        const double slowness = series.spans.size() > 1 ? Slowness(span, bestProbe) : 1;
        times.push_back(ScaledSeconds(series, span) / slowness);
    }
    return times;
}

std::optional<Figures> FiguresOf(const Series& series, double bestProbe)
{
    const std::vector<double> all = TimesOf(series);
    const std::vector<double> clean = CleanTimesOf(series, bestProbe);
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
    return figures;
}

bool IsNarrow(const Series& series, double bestProbe, double percent)
{
    const auto figures = FiguresOf(series, bestProbe);
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

double SustainedProbe(const RunRecord& record)
{
    return ProbeAt(record, 0.25).value_or(std::numeric_limits<double>::infinity());
}

std::optional<double> MedianProbe(const RunRecord& record)
{
    return ProbeAt(record, 0.5);
}
