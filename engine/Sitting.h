// A run as tarvex-run makes it: at each processor count all groups in turn, as often as the plan
// says, with a probe directly before and after every span.
#pragma once

#include "engine/Benchmark.h"
#include "engine/SpanProbe.h"
#include "results/RunRecord.h"

#include <functional>
#include <vector>

// Set the groups' flags, Go(), wait for 'LThC', then read record and results: no lock guards them
// while the thread runs. Spans that record holds already are not measured again.
//
// 'BmkS' brings, besides its text, how long the rest of the run will take: the int32 "left",
// in seconds, below 0 while that is not known.
class Sitting : public Benchmark, private SpanWatch {
public:
    explicit Sitting(const RunPlan& plan);
    ~Sitting() override;

    int32 Action() override;

    RunRecord record;
    // Called after each span, in the run's thread and off the clock.
    std::function<void(const Series& series)> onSpan;
    // Called in the same way before the first span of a pass and after its last.
    std::function<void(int32 processors, bool begins)> onPass;

private:
    bool Wants(const TestType& test) override;
    void Begins() override { probe.Begins(); }
    void Ended() override { probe.Ended(); }
    void CouldNotBegin(const TestType& test, const std::string& why) override;
    void Measured(const TestType& test, const Metric& metric, double seconds,
        const std::string& undone) override;

    // Those that are measured, in the order of a run.
    [[nodiscard]] std::vector<int32> Groups() const;
    [[nodiscard]] int32 MostRounds() const;
    // Whether the test, or one of the group's, has fewer spans at this count than so many, and
    // needs more.
    [[nodiscard]] bool Lacks(const TestType& test, int32 spans) const;
    [[nodiscard]] bool LacksAny(int32 group, int32 spans) const;
    [[nodiscard]] bool LacksAnything() const; // of all that the plan asks for at this count
    void RunPass();
    // Brings the clock up, and before the first pass what is slow at first, uncounted.
    void WarmUp();
    void RunRound();
    void RunGroup(int32 group);
    void TellStatus(int32 group);
    [[nodiscard]] double SecondsLeft(int32 group) const;
    void FillResults();

    int32 count = 0; // of processors in this pass
    int32 round = 0; // in it
    bool isWarm = false;
    bool isCounted = true; // what runs now
    SpanProbe probe;
    Probe keptProbe; // what record.bestProbe was before the run
    double groupSeconds[kNbrTestGroups]; // what a round of each takes
};
