// Runs and results files as a test wants them.
#pragma once

#include "results/RunRecord.h"

#include <string>

// A run of this program on a machine of this description.
inline RunRecord MadeRun(const std::string& machine)
{
    RunRecord run;
    run.machine = machine;
    run.started = "2026-11-21T14:03:05+01:00";
    run.build = { "1.2.6", "GNU 12.2.0", "-O2" };
    run.displaySize = "1024x768x24";
    run.display = { "The vendor", {}, {} };
    return run;
}

// Times of a quiet machine: 1 percent apart, so that no mark is due.
inline void AddTimes(RunRecord& run, const TestType& test, int32 processors, double seconds,
    double work, int repeats = 10)
{
    for (int i = 0; i < repeats; i++) {
        Span span;
        span.seconds = seconds * (1 + 0.001 * i);
        span.work = work;
        run.At(test, processors).spans.push_back(span);
    }
}

// A results file of one machine; metrics as "700:400/1.0,4.0;".
inline std::string MadeResults(const std::string& machine, const std::string& metrics)
{
    const std::string record = machine + "\t8:A card\t" + metrics;
    return "1.0\n" + std::to_string(record.size()) + "\n" + record + "\n";
}
