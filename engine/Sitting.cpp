#include "engine/Sitting.h"

#include "engine/Span.h"

#include <MachineRun.h>
#include <Message.h>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

// The first spans of 20 sittings took longer than their later ones by 28 percent in Strings, 2 in
// Memory, 27 to 55 in Dhrystone; those of all others, and of later passes, within their spread.
constexpr size_t kWarmedUp[] = { GroupIndex("strings"), GroupIndex("memory"),
    GroupIndex("dhrystone") };

} // namespace

Sitting::Sitting(const RunPlan& plan)
{
    record.plan = plan;
    results.watch = this;
    std::transform(std::begin(kTestGroups), std::end(kTestGroups), groupSeconds,
        [](const TestGroup& group) { return group.takes; });
}

Sitting::~Sitting()
{
    // Before the members go, which the thread writes to.
    Kill();
}

int32 Sitting::Action()
{
    const ProcessorConfinement toThoseCounted;
    results.Reset();
    keptProbe = record.bestProbe;
    auto& counts = record.plan.counts;
    if (counts.empty()) {
        for (int32 each = results.nbrCpus; each > 0; each--)
            counts.push_back(each);
    }
    for (const int32 each : counts) {
        count = each;
        RunPass();
    }
    UseProcessors(results.nbrCpus);
    FillResults();
    return 0;
}

void Sitting::RunPass()
{
    if (!LacksAnything())
        return;
    UseProcessors(count);
    // With one span a test there is nothing to be steady for: each is measured as it comes.
    const bool isSteady = MostRounds() > 1;
    if (count < results.nbrCpus || isSteady)
        snooze(kSettleMicros);
    cpu = count - 1;
    if (onPass)
        onPass(count, true);
    if (isSteady)
        WarmUp();
    for (round = 0; round < MostRounds(); round++) {
        RunRound();
        record.bestProbe = BestOf(keptProbe, SustainedProbe(record));
    }
    if (onPass)
        onPass(count, false);
}

void Sitting::WarmUp()
{
    isCounted = false;
    for (const size_t group : kWarmedUp) {
        if (!isWarm && this->*kGroupRuns[group].selected)
            RunGroup(static_cast<int32>(group));
    }
    isWarm = isCounted = true;
    WaitForSteadyClock();
}

std::vector<int32> Sitting::Groups() const
{
    std::vector<int32> groups;
    for (const GroupRun& run : kGroupRuns) {
        if (this->*run.selected)
            groups.push_back(static_cast<int32>(&run - kGroupRuns));
    }
    return groups;
}

bool Sitting::LacksAnything() const
{
    return std::ranges::any_of(
        Groups(), [this](int32 group) { return LacksAny(group, MostRounds()); });
}

void Sitting::RunRound()
{
    for (const int32 group : Groups()) {
        if (!LacksAny(group, round + 1))
            continue;
        TellStatus(group);
        const bigtime_t start = system_time();
        RunGroup(group);
        groupSeconds[group] = static_cast<double>(system_time() - start) / 1e6;
    }
}

// Into results without metrics, so that each test's time is the first of its metric.
void Sitting::RunGroup(int32 group)
{
    results.Clear();
    const auto run = kGroupRuns[group].run;
    (this->*run)();
}

int32 Sitting::MostRounds() const
{
    return record.plan.untilPercent ? kMostUntil : record.plan.repeats;
}

// What was not done at a count is not tried there again.
bool Sitting::Lacks(const TestType& test, int32 spans) const
{
    const Series* series = record.Find(test, count);
    if (!series)
        return true;
    if (!series->undone.empty() || static_cast<int32>(series->spans.size()) >= spans)
        return false;
    const auto& percent = record.plan.untilPercent;
    return !percent || !IsNarrow(*series, record.bestProbe, *percent);
}

bool Sitting::LacksAny(int32 group, int32 spans) const
{
    return std::ranges::any_of(kTestTypes,
        [&](const TestType& test) { return test.group == group && Lacks(test, spans); });
}

// In each round once.
bool Sitting::Wants(const TestType& test)
{
    return isCounted && Lacks(test, round + 1);
}

void Sitting::CouldNotBegin(const TestType& test, const std::string& why)
{
    Series& series = record.At(test, count);
    series.undone = why;
    if (onSpan)
        onSpan(series);
}

void Sitting::Measured(
    const TestType& test, const Metric& metric, double seconds, const std::string& undone)
{
    Series& series = record.At(test, count);
    const Span span = probe.SpanOf(test, seconds, metric.cycles);
    series.undone = undone;
    if (undone.empty())
        series.spans.push_back(span);
    if (onSpan)
        onSpan(series);
}

double Sitting::SecondsLeft(int32 group) const
{
    if (record.plan.untilPercent)
        return -1;
    double later = 0; // of this round
    double all = 0;
    for (const int32 each : Groups()) {
        all += groupSeconds[each];
        later += each >= group ? groupSeconds[each] : 0;
    }
    const auto& counts = record.plan.counts;
    const auto passes = counts.end() - std::find(counts.begin(), counts.end(), count) - 1;
    return later + all * static_cast<double>(MostRounds() - 1 - round)
        + (all * static_cast<double>(MostRounds()) + kSettleMicros / 1e6)
        * static_cast<double>(passes);
}

void Sitting::TellStatus(int32 group)
{
    if (!messenger)
        return;
    BMessage message('BmkS');
    message.AddString("status", StatusText(kTestGroups[group].status).c_str());
    message.AddInt32("left", static_cast<int32>(std::ceil(SecondsLeft(group))));
    messenger->SendMessage(&message, static_cast<BHandler*>(nullptr), B_INFINITE_TIMEOUT);
}

// As a run without repeats leaves them: a slot for each count from all processors down.
void Sitting::FillResults()
{
    results.Clear();
    for (const Series& series : record.series) {
        const auto figures = FiguresOf(series, record.bestProbe);
        if (!figures || !series.undone.empty() || series.processors > results.nbrCpus)
            continue;
        results.pass = results.nbrCpus - series.processors;
        Metric* metric =
            results.NewTest(series.test->name, static_cast<long>(series.spans.front().work));
        if (!metric)
            continue;
        metric->Index(series.test->id);
        metric->Units(series.test->units);
        const double seconds = figures->summary.estimate;
        // The metric's work is that of its first series.
        const double work = series.spans.front().work;
        metric->Time(static_cast<float>(work > 0 ? seconds * metric->cycles / work : seconds));
    }
    results.pass = results.nbrCpus - 1;
    results.FillGaps();
    results.FillTheseDevices();
}
