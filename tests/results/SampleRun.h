// A run's record with a value in every field that a record has, and one with as few as there can
// be.
#pragma once

#include "results/RunRecord.h"

inline MachineState SampleState(uint64 ticks)
{
    MachineState state { 0.25, 0.5, 0.75, {}, 48.5, {}, false, 97, true, 1500000, 3 };
    state.processors = { { 0, ticks, ticks / 2, 7, 1, 2 }, { 1, ticks, 5, {}, {}, {} } };
    state.energy = { { "package-0", 4 * ticks, 262143328850 }, { "package-1", ticks, 0 } };
    return state;
}

// Times of 4.3 ms and, of the machine's other speed, 8.4 ms.
inline Series SampleSeries(const TestType& test, int32 processors, int repeats)
{
    Series series { &test, processors, {}, "" };
    for (int i = 0; i < repeats; i++) {
        const double seconds = (i % 2 == 0 ? 0.0043 : 0.0084) + i * 1e-7 / 3;
        series.spans.push_back(
            { seconds, 6000, { 0.00007, 0.00012 }, { 0.000071, 0.00012 }, 1e-5, i == 1, 0.1 + i });
    }
    return series;
}

inline RunRecord SampleRun()
{
    RunRecord run;
    run.plan = { { "ackerman" }, { 2, 1 }, 8, 1.5 };
    run.label = "Küche, \"alt\"\nlinks";
    run.started = "2026-11-21T14:03:05+01:00";
    run.machine = "Some PC (2-2000)";
    run.build = { "1.2.6", "GNU 12.2.0", "-O2 -fno-builtin" };
    ProcessorDetails processor { 0, 0, -1, { 0, 1 }, CoreKind::kPerformance, 800000000, 4000000000,
        900000000, 3000000000, "intel_pstate", "powersave", "balance_performance" };
    run.details = { "6.1.0-13-amd64", "#1 SMP", "Debian GNU/Linux 12 (bookworm)", "Model",
        1ull << 53, "KVM", "docker", { processor, processor } };
    run.details.processors[1].number = 1;
    run.details.processors[1].kind = CoreKind::kEfficiency;
    run.warnings = { { "load", "load 2.31: other programs share the processors" } };
    run.display = { "The vendor", { "GLX", "DRI3" }, { "HDMI-1" } };
    run.displaySize = "1024x768x24";
    run.temporaryFolder = { "ext4", false };
    run.passes = { { 2, { 0, 1 }, {}, SampleState(1000), SampleState(3000) },
        { 1, { 0 }, { 1 }, SampleState(3000), SampleState(9000) } };
    run.series.push_back(SampleSeries(TestNamed("Ackerman"), 2, 8));
    run.series.push_back(SampleSeries(TestNamed("Ackerman"), 1, 3));
    run.series.push_back({ &TestNamed("Sieve"), 1, {}, "a flag is wrong" });
    run.bestProbe = { 0.00007, 0.00012 };
    return run;
}
