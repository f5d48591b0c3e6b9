#include "engine/SpanProbe.h"

#include "engine/Probe.h"

#include <algorithm>

namespace {

// The display server works for these tests, with one processor on the same: they wait for it by
// design.
constexpr int32 kDrawn = GroupIndex("graphics");

} // namespace

void SpanProbe::Begins()
{
    span = Span();
    span.probeBefore = ProbeSeconds();
    begin = ReadThreadMoment();
}

void SpanProbe::Ended()
{
    const ThreadChange change = ChangeBetween(begin, ReadThreadMoment(begin.processor));
    span.waited = change.waited;
    span.isThrottled = change.isThrottled;
    span.probeAfter = ProbeSeconds();
}

Span SpanProbe::SpanOf(const TestType& test, double seconds, double work) const
{
    Span whole = span;
    whole.seconds = seconds;
    whole.work = work;
    if (test.group == kDrawn)
        whole.waited = 0;
    return whole;
}

void SharedSpans::Reset(double best)
{
    spans.clear();
    bestProbe = best;
}

int32 SharedSpans::CountShared() const
{
    // Only now, as the best probe may have come after a span.
    return static_cast<int32>(std::count_if(spans.begin(), spans.end(),
        [this](const Span& span) { return span.isThrottled || IsShared(span, bestProbe); }));
}

void SharedSpans::Measured(
    const TestType& test, const Metric& metric, double seconds, const std::string& undone)
{
    if (!undone.empty())
        return;
    spans.push_back(probe.SpanOf(test, seconds, metric.cycles));
    bestProbe = std::min({ bestProbe, spans.back().probeBefore, spans.back().probeAfter });
}
