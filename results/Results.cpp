#include "results/Results.h"

#include "foundation/Utf8.h"
#include "sysinfo/LibDeviceInfo.h"
#include "sysinfo/LibSysInfo.h"
#include "sysinfo/TypedPciNames.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

namespace {

// The calls stand one after the other, as in the tests whose loops they stand for.
template <int... call>
void CallRand(long loops, std::integer_sequence<int, call...>)
{
    for (long i = 0; i < loops; i++)
        ((static_cast<void>(call), static_cast<void>(rand())), ...);
}

void RunLoops(long loops, int randsPerLoop)
{
    switch (randsPerLoop) {
        case 1: return CallRand(loops, std::make_integer_sequence<int, 1>());
        case 2: return CallRand(loops, std::make_integer_sequence<int, 2>());
        case 3: return CallRand(loops, std::make_integer_sequence<int, 3>());
        case 4: return CallRand(loops, std::make_integer_sequence<int, 4>());
        case 5: return CallRand(loops, std::make_integer_sequence<int, 5>());
        case 6: return CallRand(loops, std::make_integer_sequence<int, 6>());
    }
}

void AppendLine(LinkList<RelatedDevices>& devices, int type, const LibString& text)
{
    auto line = std::make_unique<RelatedDevices>();
    line->Description(type, text);
    if (!devices.Insert(std::move(line)))
        fprintf(stderr, "<%s> not inserted\n", text.operator const char*());
}

// Divided as a double: a float holds whole microseconds up to 17 seconds only.
float Seconds(bigtime_t micros)
{
    return static_cast<float>(static_cast<double>(micros) / 1'000'000);
}

} // namespace

void RelatedDevices::Description(const int& newType, const char* text)
{
    type = newType;
    description = text;
}

void RelatedDevices::PrintToStream() const
{
    fprintf(stderr, "RelatedDevices:: <%s>, type %d\n", LibPrintable(description).c_str(), type);
}

void LibTimer::Start()
{
    start = system_time();
}

float LibTimer::Stop()
{
    stop = system_time();
    return Seconds(stop - start);
}

float LibTimer::Elapsed() const
{
    return Seconds(system_time() - start);
}

void LibTimer::PrintToStream() const
{
    fprintf(stderr, "LibTimer:: start %" PRId64 ", stop %" PRId64 "\n", start, stop);
}

Results::Results(bool isCurrent) : Results(isCurrent, LibSysInfo()) { }

Results::Results(bool isCurrent, const LibSysInfo& machine)
    : icon(std::make_unique<BBitmap>(BRect(0, 0, 15, 15), B_CMAP8)), current(isCurrent)
{
    Reset(machine);
}

Results::Results(PackedRecord record)
    : icon(std::make_unique<BBitmap>(BRect(0, 0, 15, 15), B_CMAP8)), current(false),
      packed(std::move(record))
{
    UpdateIcon();
}

Results& Results::operator=(Results& o)
{
    if (this == &o)
        return *this;
    frame = o.frame;
    expanded = o.expanded;
    description = o.description;
    nbrCpus = o.nbrCpus;
    cpu = o.cpu;
    pass = o.pass;
    devices = o.devices;
    LinkList<Metric>::operator=(o);
    packed = o.packed;
    UpdateIcon();
    return *this;
}

void Results::Reset()
{
    Reset(LibSysInfo());
}

void Results::Reset(const LibSysInfo& machine)
{
    Clear();
    packed = {};
    devices.Clear();
    machine.Description(description);
    nbrCpus = machine.cpuCount;
    // CycleCpu() goes on before it answers: the first pass is 0, with all processors.
    cpu = nbrCpus + 1;
    pass = -1;
    expanded = false;
    UpdateIcon();
}

namespace {

// The user's own in place of missing ones, if they are to be in results.
void GiveNames(LibDeviceInfo& info)
{
    if (TypedPciNames::AreForResults())
        static_cast<void>(TypedPciNames().GiveTo(info)); // not to be told here
}

} // namespace

void Results::FillTheseDevices()
{
    const LibSysInfo machine;
    LibString text;
    text.Formatted("%s, %dx%d resolution", machine.ScreenDepthStr(), machine.screenWidth,
        machine.screenHeight);
    // No class of the buses, of which 0 is one. The chart calls it the screen.
    AppendLine(devices, -1, text);

    LibDeviceInfo info;
    GiveNames(info);
    int index = 0;
    int classId = 0;
    LibString name;
    while (info.NextClassId(index, classId, name)) {
        if (info.FindDevice(classId, text))
            AppendLine(devices, classId, text);
    }
}

bool Results::RenameDevices()
{
    LibString machine;
    LibSysInfo().Description(machine);
    if (description.Compare(machine) != 0)
        return false;
    bool isOther = false;
    LibDeviceInfo info;
    GiveNames(info);
    for (RelatedDevices& device : devices) {
        LibString text;
        if (!info.FindDevice(device.type, text) || device.description.Compare(text) == 0)
            continue;
        device.Description(device.type, text);
        isOther = true;
    }
    return isOther;
}

bool Results::CycleCpu()
{
    pass++;
    return --cpu > 0;
}

Metric* Results::NewTest(const char* text, const long& cycles)
{
    auto metric = std::make_unique<Metric>();
    metric->Description(text);
    metric->NbrCycles(cycles);
    if (Metric* known = Get(metric.get())) {
        FillGaps(*known);
        return known;
    }
    FillGaps(*metric);
    Metric* inserted = Insert(std::move(metric));
    if (!inserted)
        fprintf(stderr, "<%s> not inserted\n", text);
    return inserted;
}

bool Results::Has(const Metric& probe) const
{
    return std::find(begin(), end(), probe) != end() || packed.Find(probe);
}

double Results::BestRate(const Metric& probe) const
{
    if (const auto found = std::find(begin(), end(), probe); found != end())
        return found->BestRate();
    const auto metric = packed.Find(probe);
    return metric ? metric->BestRate() : 0;
}

bool Results::MakeCurrent(const Metric& probe)
{
    return IsPacked() ? KeepAsCurrent(packed.Find(probe)) : Get(&probe) != nullptr;
}

bool Results::MakeFirstCurrent()
{
    return IsPacked() ? KeepAsCurrent(packed.First()) : First() != nullptr;
}

bool Results::KeepAsCurrent(std::unique_ptr<Metric> metric)
{
    Clear();
    return metric && Insert(std::move(metric)) && First();
}

void Results::FillGaps(Metric& metric) const
{
    while (metric.nbrTimes < std::min(pass, kMostTimes))
        metric.Time(0);
}

void Results::FillGaps()
{
    for (Metric& metric : *this)
        FillGaps(metric);
}

void Results::Calibrate(const long& loops, int randsPerLoop)
{
    // First, so that a test without loops does not have the cost of the one before taken off.
    calibration = 0;
    if (loops == 0)
        return;
    const bigtime_t before = system_time();
    RunLoops(loops, randsPerLoop);
    calibration = system_time() - before;
}

double Results::EndTimer()
{
    return static_cast<double>(Stop()) - static_cast<double>(calibration) / 1'000'000;
}

float Results::Time(const int& slot)
{
    float seconds = 0;
    if (slot < 0 || slot >= kMostTimes)
        return seconds;
    for (const Metric* metric = First(); metric; metric = Next())
        seconds += metric->times[slot];
    return seconds;
}

bool Results::Contains(BPoint where)
{
    if (!frame.Contains(where))
        return false;
    expanded = !expanded;
    UpdateIcon();
    return true;
}

void Results::PrintToStream() const
{
    fprintf(stderr, "<%s>, nbrcpu %d, cpu %d\n", LibPrintable(description).c_str(), nbrCpus, cpu);
}

float ResultList::MaxRate() const
{
    double best = 0;
    for (const Results& machine : *this) {
        if (const Metric* metric = machine.Current())
            best = std::max(best, metric->BestRate());
    }
    return static_cast<float>(best);
}

Results* ResultList::Contains(BPoint where)
{
    for (Results& machine : *this) {
        if (machine.Contains(where))
            return &machine;
    }
    return nullptr;
}

int ResultList::MaxNbrCpus() const
{
    int32 most = 0;
    for (const Results& machine : *this)
        most = std::max(most, machine.nbrCpus);
    return most;
}

void ResultList::MakeCurrent(const Metric& probe)
{
    for (Results& machine : *this) {
        const char* name = probe.description;
        if (!machine.MakeCurrent(probe))
            fprintf(stderr, "Unable to make given metric <%s> current\n", name);
    }
}

void ResultList::FirstCurrent()
{
    for (Results& machine : *this) {
        if (!machine.MakeFirstCurrent()) {
            // The description may come from somebody's file, and control characters in it would
            // reach the terminal.
            fprintf(stderr, "Unable to make first current <%s>\n",
                LibPrintable(machine.description).c_str());
        }
    }
}

void ResultList::Save(FILE* file, const int& columns) const
{
    for (const Results& machine : *this)
        machine.Save(file, columns);
}

void ResultList::PrintToStream() const
{
    for (const Results& machine : *this)
        machine.PrintToStream();
}
