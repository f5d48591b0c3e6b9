#include "results/RunComparison.h"

#include "foundation/PlainText.h"
#include "tests/results/MadeRuns.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

namespace {

constexpr const TestType& gAckerman = TestNamed("Ackerman");
constexpr const TestType& gSieve = TestNamed("Sieve");

std::vector<MeasuredMachine> Machines(const std::vector<RunRecord>& runs)
{
    std::vector<MeasuredMachine> machines;
    for (const RunRecord& run : runs) {
        machines.push_back({ run, "", "", "", "" });
        machines.back().name = "machine " + std::to_string(9 - machines.size());
    }
    return machines;
}

std::vector<ComparedRow> Compare(const std::vector<RunRecord>& runs)
{
    return CompareMachines(Machines(runs), 0, [](const TestType&) { return true; });
}

// "name count percent verdict (why)".
std::string Told(const ComparedRow& row)
{
    const std::string percent = row.percent ? LibFixedText(*row.percent, 1) : "-";
    return row.test->name + std::string(" ") + std::to_string(row.processors) + " " + percent + " "
        + VerdictText(row.judgement.verdict) + (row.why.empty() ? "" : " (" + row.why + ")");
}

std::string Told(const std::vector<RunRecord>& runs)
{
    std::string told;
    for (const ComparedRow& row : Compare(runs))
        told += Told(row) + "\n";
    return told;
}

// A run with ten times of one test on two processors.
RunRecord RunOf(double seconds)
{
    RunRecord run = MadeRun("PC (2-x)");
    AddTimes(run, gAckerman, 2, seconds, 6000);
    return run;
}

// What a case may change.
const std::map<std::string, void (*)(RunRecord&)> kChanges = {
    { "version", [](RunRecord& run) { run.build.version = "1.2.7"; } },
    { "compiler", [](RunRecord& run) { run.build.compiler = "Clang 14"; } },
    { "flags", [](RunRecord& run) { run.build.flags = "-O3"; } },
    { "size", [](RunRecord& run) { run.displaySize = "800x600x24"; } },
    { "server", [](RunRecord& run) { run.display->vendor = "Other"; } },
    { "headless", [](RunRecord& run) { run.display.reset(); } },
    { "five", [](RunRecord& run) { run.series.front().spans.resize(5); } },
    { "six", [](RunRecord& run) { run.series.front().spans.resize(6); } },
    { "zero", [](RunRecord& run) { run.series.front().spans[0].seconds = 0; } },
    { "unsteady", [](RunRecord& run) { run.series.front().spans[0].seconds *= 1.24; } },
    { "two",
        [](RunRecord& run) {
            for (int i = 0; i < 4; i++)
                run.series.front().spans[i].seconds = 1;
        } },
    { "undone", [](RunRecord& run) { run.series.back().undone = "no window"; } },
    { "empty", [](RunRecord& run) { run.series.back().spans.clear(); } },
};

// Of "400 2 0.5 6000; version": tests by their numbers, each at a count with its seconds and its
// work, and changes.
RunRecord RunOf(const std::string& text)
{
    RunRecord run = MadeRun("PC (2-x)");
    std::istringstream parts(text);
    for (std::string part; parts >> part;) {
        int32 count = 0;
        double seconds = 0, work = 0;
        if (const auto change = kChanges.find(part); change != kChanges.end())
            change->second(run);
        else if (parts >> count >> seconds >> work)
            AddTimes(run, *FindTestType(std::stoi(part)), count, seconds, work);
    }
    return run;
}

TEST(RunComparison, TellsOfEachTestAtEqualCountsWhatIsFasterOrWhyNot)
{
    for (const auto& [runs, told] : ReadRows("results/data/compared")) {
        const size_t slash = runs.find(" / ");
        EXPECT_EQ(
            Told({ RunOf(runs.substr(0, slash)), RunOf(runs.substr(slash + 3)) }), told + "\n")
            << runs;
    }
    EXPECT_DOUBLE_EQ(
        *Compare({ RunOf("601 2 1 0"), RunOf("601 2 2 0") }).front().candidate.rate, 2 * 1.0045);
}

TEST(RunComparison, RestsOnCleanTimesByTheBestProbeOfTheMachine)
{
    RunRecord before = RunOf(1);
    RunRecord after = RunOf(1);
    for (RunRecord* run : { &before, &after }) {
        run->bestProbe = { 0.0001, 0.0001 };
        for (Span& span : run->series.front().spans)
            span.probeBefore = span.probeAfter = { 0.0001, 0.0001 };
    }
    for (int i = 0; i < 4; i++) {
        after.series.front().spans[i].probeAfter.core = 0.0002;
        after.series.front().spans[i].seconds = 2;
    }
    const ComparedRow clean = Compare({ before, after }).front();
    EXPECT_EQ(Told(clean), "Ackerman 2 99.8 no real difference");
    EXPECT_EQ(clean.candidate.n, 6);
    // It was slow throughout, which only the other run knows.
    before.bestProbe.core = 0.00005;
    for (Span& span : before.series.front().spans)
        span.probeBefore.core = span.probeAfter.core = 0.00005;
    const ComparedRow shared = Compare({ before, after }).front();
    EXPECT_EQ(
        shared.why, "shared, two speeds: 1006.50 ms (60 %) and 2000.00 ms (40 %), unsteady, wide");
    EXPECT_TRUE(shared.percent) << "the times are all there is";
    after.details.processorModel = "Another";
    EXPECT_EQ(Compare({ before, after }).front().why, "");
    after.details.processorModel.reset();
    after.machine = "Another PC (2-x)";
    EXPECT_EQ(Compare({ before, after }).front().why, "");
}

TEST(RunComparison, LeavesTheClockOutAndTellsIt)
{
    RunRecord before = RunOf(1);
    RunRecord after = RunOf(1.25);
    for (RunRecord* run : { &before, &after })
        run->bestProbe = { 0.0001, 0.0001 };
    for (Span& span : before.series.front().spans)
        span.probeBefore = span.probeAfter = { 0.0001, 0.0001 };
    for (Span& span : after.series.front().spans)
        span.probeBefore = span.probeAfter = { 0.000112, 0.000112 };
    EXPECT_EQ(Told({ before, after }), "Ackerman 2 89.6 slower\n") << "beyond the clock";
    EXPECT_NEAR(ClockPercent(before, after).value(), 100 / 1.12, 1e-9);
    after.series.front() = RunOf(1.12).series.front();
    for (Span& span : after.series.front().spans)
        span.probeBefore = span.probeAfter = { 0.000112, 0.000112 };
    EXPECT_EQ(Told({ before, after }), "Ackerman 2 100.0 no real difference\n");
    after.details.processorModel = "Another";
    EXPECT_FALSE(ClockPercent(before, after));
}

TEST(RunComparison, SortsAndChecksABuild)
{
    RunRecord fell = RunOf(1.12);
    AddTimes(fell, gSieve, 2, 1, 6000);
    RunRecord before = RunOf(1);
    AddTimes(before, gSieve, 2, 1, 6000);
    RunRecord rose = RunOf(0.9);
    const std::vector<MeasuredMachine> machines = Machines({ before, fell, rose });
    auto rows = CompareMachines(machines, 0, [](const TestType&) { return true; });
    const auto told = [&](SortBy by) {
        SortRows(rows, by, machines);
        std::string all;
        for (const ComparedRow& row : rows)
            all += row.test->name + std::to_string(row.machine) + " ";
        return all;
    };
    EXPECT_EQ(told(SortBy::kPercent), "Ackerman1 Sieve1 Ackerman2 Sieve2 ");
    EXPECT_EQ(told(SortBy::kName), "Ackerman2 Sieve2 Ackerman1 Sieve1 ");
    EXPECT_EQ(told(SortBy::kTest), "Ackerman1 Ackerman2 Sieve1 Sieve2 ");
    EXPECT_EQ(CheckBuild(rows, 3, 10.8), BuildCheck::kCannotTell) << "a test is missing";
    EXPECT_EQ(CheckBuild(rows, 3, 10.6), BuildCheck::kFell);
    const auto good = Compare({ before, before });
    EXPECT_EQ(CheckBuild(good, 2, 0), BuildCheck::kPassed);
    EXPECT_EQ(CheckBuild(good, 3, 0), BuildCheck::kCannotTell) << "a machine has no row";
}

} // namespace
