#include "engine/SpanProbe.h"

#include "engine/Span.h"

#include <algorithm>

namespace {

// The display server works for these tests, with one processor on the same: they wait for it by
// design.
constexpr int32 kDrawn = GroupIndex("graphics");

} // namespace

void SpanProbe::Begins()
{
    span = Span();
    span.probeBefore = TakeProbe();
    begin = ReadThreadMoment();
}

void SpanProbe::Ended()
{
    const ThreadChange change = ChangeBetween(begin, ReadThreadMoment(begin.processor));
    span.waited = change.waited;
    span.isThrottled = change.isThrottled;
    span.probeAfter = TakeProbe();
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

void SharedSpans::Reset(const Probe& best)
{
    record = RunRecord();
    record.bestProbe = best;
}

const std::vector<Span>& SharedSpans::Spans() const
{
    static const std::vector<Span> kNone;
    return record.series.empty() ? kNone : record.series.front().spans;
}

int32 SharedSpans::CountShared() const
{
    // Only now, as what the run sustained is not known before.
    const Probe best = BestOf(record.bestProbe, Sustained());
    return static_cast<int32>(std::count_if(Spans().begin(), Spans().end(),
        [&best](const Span& span) { return span.isThrottled || IsShared(span, best); }));
}

void SharedSpans::Measured(
    const TestType& test, const Metric& metric, double seconds, const std::string& undone)
{
    if (undone.empty())
        record.At(kTestTypes[0], 1).spans.push_back(probe.SpanOf(test, seconds, metric.cycles));
}
