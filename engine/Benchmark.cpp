#include "engine/Benchmark.h"

#include "engine/Span.h"

#include <Message.h>

#include <algorithm>
#include <cstdio>

namespace {

static_assert(std::equal(std::begin(kGroupRuns), std::end(kGroupRuns), std::begin(kTestGroups),
                  std::end(kTestGroups),
                  [](const GroupRun& run, const TestGroup& group) { return run.key == group.key; }),
    "every group of the catalogue has its run, in the same order");

} // namespace

Benchmark::Benchmark() : results(false) { }

Benchmark::~Benchmark()
{
    // Before results goes, which the thread writes to.
    Kill();
}

int32 Benchmark::Action()
{
    const ProcessorConfinement toThoseCounted;
    results.Reset();
    cpu = results.nbrCpus - 1;
    while (results.CycleCpu()) {
        RunSelectedGroups();
        if (cpu != 0) {
            _kset_cpu_state_(cpu, 0);
            cpu--;
            snooze(kSettleMicros);
        }
    }
    for (cpu = results.nbrCpus - 1; cpu > 0; cpu--)
        _kset_cpu_state_(cpu, 1);
    results.FillGaps();
    results.FillTheseDevices();
    return 0;
}

void Benchmark::RunSelectedGroups()
{
    for (size_t i = 0; i < kNbrTestGroups; i++) {
        const GroupRun& group = kGroupRuns[i];
        if (!(this->*group.selected))
            continue;
        UpdateStatus(kTestGroups[i].status);
        (this->*group.run)();
    }
}

void Benchmark::Measure(
    const TestType& test, long loops, const std::function<void()>& kernel, const Finish& finish)
{
    MeasureSpan(results, test, loops, 0, kernel, [&](Metric& metric) {
        const std::string why = finish(metric);
        if (!why.empty())
            fprintf(stderr, "<%s> was not done: %s\n", test.name, why.c_str());
        return why;
    });
}

void Benchmark::TellUndone(const TestType& test, const std::string& why)
{
    fprintf(stderr, "<%s> was not done: %s\n", test.name, why.c_str());
    if (results.watch)
        results.watch->CouldNotBegin(test, why);
}

std::string Benchmark::StatusText(const char* test) const
{
    char text[128];
    snprintf(text, sizeof text, "Testing %s (cpu %d/%d)", test, cpu + 1, results.nbrCpus);
    return text;
}

void Benchmark::UpdateStatus(const char* test)
{
    if (!messenger)
        return;
    BMessage message('BmkS');
    message.AddString("status", StatusText(test).c_str());
    messenger->SendMessage(&message, static_cast<BHandler*>(nullptr), B_INFINITE_TIMEOUT);
}
