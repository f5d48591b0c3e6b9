#include "engine/Benchmark.h"

#include <Message.h>

#include <cstdio>

namespace {

struct TestGroup {
    bool Benchmark::*selected;
    const char* name;
    void (Benchmark::*run)();
};

// In the order of a run. Creation and deletion of files come before their output and input.
const TestGroup kTestGroups[] = {
    { &Benchmark::graphics, "Graphics", &Benchmark::RunGraphics },
    { &Benchmark::strings, "Strings", &Benchmark::RunStrings },
    { &Benchmark::memory, "Memory", &Benchmark::RunMemory },
    { &Benchmark::savage, "Savage", &Benchmark::RunSavage },
    { &Benchmark::ackerman, "Ackerman", &Benchmark::RunAckerman },
    { &Benchmark::dhrystone, "Dhrystone", &Benchmark::RunDhrystone },
    { &Benchmark::fourier, "Fourier", &Benchmark::RunFourier },
    { &Benchmark::whetstone, "Whetstone", &Benchmark::RunWhetstone },
    { &Benchmark::sieve, "Sieve", &Benchmark::RunSieve },
    { &Benchmark::fileLifeCycle, "Disk LifeCycle", &Benchmark::RunFileLifeCycle },
    { &Benchmark::fileIO, "Disk Input/Output", &Benchmark::RunFileIO },
};

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
    results.FillTheseDevices();
    return 0;
}

void Benchmark::RunSelectedGroups()
{
    for (const TestGroup& group : kTestGroups) {
        if (!(this->*group.selected))
            continue;
        UpdateStatus(group.name);
        (this->*group.run)();
    }
}

Metric* Benchmark::Measure(const Test& test, const std::function<void()>& kernel)
{
    return MeasureIfDone(test, [&kernel] {
        kernel();
        return true;
    });
}

Metric* Benchmark::MeasureIfDone(const Test& test, const std::function<bool()>& kernel)
{
    Metric* metric = results.NewTest(test.name, test.cycles);
    if (!metric)
        return nullptr;
    results.Calibrate(test.loops, 0);
    results.StartTimer();
    const bool done = kernel();
    const auto seconds = float(results.EndTimer());
    if (!done) {
        if (metric->nbrTimes == 0 && results.Get(metric) != nullptr)
            results.Remove(); // a metric without times could not be read back
        return nullptr;
    }
    metric->Time(seconds);
    metric->Index(test.index);
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
