// What tells of a span whether the thread had its core to itself, taken off the clock.
#pragma once

#include "results/Results.h"
#include "results/RunRecord.h"

#include <ThreadMoment.h>

// In the thread that measures, around each span: Begins(), Ended(), then SpanOf().
class SpanProbe {
public:
    // Directly before and directly after the stopwatch runs.
    void Begins();
    void Ended();
    // The span with its probes and waits. seconds: the stopwatch's, work: the units done in it.
    [[nodiscard]] Span SpanOf(const TestType& test, double seconds, double work) const;

private:
    Span span;
    ThreadMoment begin;
};

// Counts the shared spans of a run whose times are kept elsewhere: `benchmark.results.watch` before
// Go(). Read when the run has ended, as no lock guards it.
class SharedSpans : public SpanWatch {
public:
    // Forgets the run before. best: the probe that is known of this processor model.
    void Reset(const Probe& best);
    // Spans that were timed, and how many of them were shared or throttled.
    [[nodiscard]] int32 Count() const { return static_cast<int32>(Spans().size()); }
    [[nodiscard]] int32 CountShared() const;
    // What the run's probes were for long.
    [[nodiscard]] Probe Sustained() const { return SustainedProbe(record); }

private:
    bool Wants(const TestType&) override { return true; }
    bool WantsPixels() override { return false; }
    void Begins() override { probe.Begins(); }
    void Ended() override { probe.Ended(); }
    void CouldNotBegin(const TestType&, const std::string&) override { }
    void Measured(const TestType& test, const Metric& metric, double seconds,
        const std::string& undone) override;

    [[nodiscard]] const std::vector<Span>& Spans() const;

    SpanProbe probe;
    RunRecord record; // all spans in one series, as the tests do not matter here
};
