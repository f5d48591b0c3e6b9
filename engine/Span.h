// The one way in which a test is timed, and a probe of how fast the core is just then.
#pragma once

#include "results/Results.h"
#include "results/RunRecord.h"

#include <string>

// Times kernel() as the next slot of the test's metric in results, less what its own loop costs:
// loops rounds of so many calls of rand(), see Results::Calibrate. finish(metric) then says, off
// the clock, why the work was not done, or "", and may set the metric's cycles. Where nobody wants
// the test now, both are done all the same, as the next test may build on it, but not timed.
// Without memory for the metric nothing is done.
//
// A template, not a function object: an indirect call would be measured too.
template <typename Kernel, typename Finish>
void MeasureSpan(Results& results, const TestType& test, long loops, int randsPerLoop,
    Kernel kernel, Finish finish)
{
    SpanWatch* const watch = results.watch;
    if (watch && !watch->Wants(test)) {
        Metric untold;
        kernel();
        finish(untold);
        return;
    }
    Metric* metric = results.NewTest(test.name, test.work);
    if (!metric)
        return;
    metric->Index(test.id);
    metric->Units(test.units);
    results.Calibrate(loops, randsPerLoop);
    if (watch)
        watch->Begins();
    results.StartTimer();
    kernel();
    metric->Time(static_cast<float>(results.EndTimer()));
    if (watch)
        watch->Ended();
    const double seconds = static_cast<double>(results.Micros() - results.calibration) / 1'000'000;
    const std::string undone = finish(*metric);
    if (watch)
        watch->Measured(test, *metric, seconds, undone);
}

// The probe: two fixed loops that tell whether the core is another's too, and its clock. See Probe.
//
// The shortest of a few rounds each, so that an interrupt does not count. Costs about 0.1 ms of the
// calling thread's processor. What it does not notice is a program that has the same hardware
// thread in turn: see ThreadMoment.
[[nodiscard]] Probe TakeProbe();

// Probes until the core has woken up and its clock is steady, a fifth of a second at most.
void WaitForSteadyClock();
