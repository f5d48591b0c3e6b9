#include "engine/Benchmark.h"

#include <Message.h>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

static_assert(std::equal(std::begin(kGroupRuns), std::end(kGroupRuns), std::begin(kTestGroups),
                  std::end(kTestGroups),
                  [](const GroupRun& run, const TestGroup& group) { return run.key == group.key; }),
    "every group of the catalogue has its run, in the same order");

// The machine settles this long with one processor fewer before the next pass.
constexpr bigtime_t kSettleMicros = 1000000;

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
    undone.clear();
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

bool Benchmark::LeaveOutUndone()
{
    for (const auto& [test, pass] : undone) {
        Metric probe;
        probe.Description(test->name);
        Metric* metric = results.Get(&probe);
        if (!metric || pass < 0 || pass >= metric->Slots())
            continue;
        metric->times[pass] = 0;
        if (std::count(metric->times, metric->times + metric->Slots(), 0.0f) == metric->Slots())
            results.Remove();
    }
    return !undone.empty();
}

void Benchmark::CheckWork(const TestType& test, bool isDone, int error)
{
    if (isDone)
        return;
    const char* why = error != 0 ? strerror(error) : "end of file";
    fprintf(stderr, "<%s> was not done: %s\n", test.name, why);
    undone.push_back({ &test, results.pass });
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

Metric* Benchmark::Measure(const TestType& test, long loops, const std::function<void()>& kernel)
{
    Metric* metric = results.NewTest(test.name, test.work);
    if (!metric)
        return nullptr;
    results.Calibrate(loops, 0);
    results.StartTimer();
    kernel();
    metric->Time(float(results.EndTimer()));
    metric->Index(test.id);
    metric->Units(test.units);
    return metric;
}

void Benchmark::UpdateStatus(const char* test)
{
    if (!messenger)
        return;
    char text[128];
    snprintf(text, sizeof text, "Testing %s (cpu %d/%d)", test, cpu + 1, results.nbrCpus);
    BMessage message('BmkS');
    message.AddString("status", text);
    messenger->SendMessage(&message, static_cast<BHandler*>(nullptr), B_INFINITE_TIMEOUT);
}
