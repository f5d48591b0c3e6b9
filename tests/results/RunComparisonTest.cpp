#include "results/RunComparison.h"

#include "foundation/PlainText.h"
#include "tests/results/MadeRuns.h"
#include "tests/support/Test.h"

namespace {

constexpr const TestType& gAckerman = TestNamed("Ackerman");
constexpr const TestType& gSequential = TestNamed("Ten Sequential Whetstones");
constexpr const TestType& gSieve = TestNamed("Sieve");
constexpr const TestType& gLines = TestNamed("Graphics Lines Flushed");

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
RunRecord RunOf(double seconds, const TestType& test = gAckerman, double work = 6000)
{
    RunRecord run = MadeRun("PC (2-x)");
    AddTimes(run, test, 2, seconds, work);
    return run;
}

TEST(RunComparison, TellsWhatIsFasterInTheDirectionOfTheTest)
{
    EXPECT_EQ(Told({ RunOf(1), RunOf(0.5) }), "Ackerman 2 200.0 faster\n");
    EXPECT_EQ(Told({ RunOf(1), RunOf(1) }), "Ackerman 2 100.0 no real difference\n");
    const RunRecord quick = RunOf(1, gSequential, 0);
    const RunRecord slow = RunOf(2, gSequential, 0);
    EXPECT_EQ(Told({ quick, slow }), "Ten Sequential Whetstones 2 50.0 slower\n");
    EXPECT_DOUBLE_EQ(*Compare({ quick, slow }).front().candidate.rate, 2 * 1.0045);
    // Its time is fixed: it does less work in it.
    EXPECT_EQ(Told({ RunOf(5, gSieve, 8000), RunOf(5, gSieve, 2000) }), "Sieve 2 25.0 slower\n");
}

TEST(RunComparison, ComparesEqualProcessorCountsAndMissesNoTestOfThem)
{
    RunRecord before = RunOf(1);
    AddTimes(before, gAckerman, 4, 1, 6000);
    AddTimes(before, gAckerman, 1, 1, 6000);
    AddTimes(before, gSieve, 1, 1, 6000);
    RunRecord after = RunOf(1);
    AddTimes(after, gAckerman, 1, 2.44, 6000);
    AddTimes(after, gLines, 1, 1, 10000);
    after.At(gLines, 2).undone = "no window";
    EXPECT_EQ(Told({ before, after }),
        "Ackerman 2 100.0 no real difference\n"
        "Ackerman 1 41.0 slower\n"
        "Sieve 1 - cannot tell (not measured)\n"
        "Graphics Lines Flushed 2 - cannot tell (baseline not measured)\n"
        "Graphics Lines Flushed 1 - cannot tell (baseline not measured)\n");
    EXPECT_EQ(Told({ after, RunOf(1) }),
        "Ackerman 2 100.0 no real difference\n"
        "Graphics Lines Flushed 2 - cannot tell (baseline its work was not done: no window)\n");
}

TEST(RunComparison, TellsNothingOfWhatIsNotAlike)
{
    struct Change {
        const TestType& test;
        void (*change)(RunRecord&);
        const char* verdict;
    };
    const Change rows[] = {
        { gAckerman, [](RunRecord& run) { run.build.version = "1.2.7"; },
            "cannot tell (another version)" },
        { gAckerman, [](RunRecord& run) { run.build.compiler = "Clang 14"; },
            "cannot tell (another compiler)" },
        { gAckerman, [](RunRecord& run) { run.build.flags = "-O3"; },
            "cannot tell (another compiler)" },
        { gLines, [](RunRecord& run) { run.displaySize = "800x600x24"; },
            "cannot tell (another display)" },
        { gLines, [](RunRecord& run) { run.display->vendor = "Other"; },
            "cannot tell (another display)" },
        { gAckerman, [](RunRecord& run) { run.displaySize = "800x600x24"; }, "faster" },
        { gAckerman, [](RunRecord& run) { run.series.front().spans.resize(5); },
            "cannot tell (too few repeats)" },
        { gAckerman, [](RunRecord& run) { run.series.front().spans.resize(6); }, "faster" },
        { gAckerman, [](RunRecord& run) { run.series.front().spans[0].seconds *= 1.24; },
            "cannot tell (unsteady)" },
        { gAckerman,
            [](RunRecord& run) {
                for (int i = 0; i < 4; i++)
                    run.series.front().spans[i].seconds = 1;
            },
            "cannot tell (two speeds: 503.25 ms (60 %) and 1000.00 ms (40 %), unsteady, wide)" },
    };
    for (const auto& [test, change, verdict] : rows) {
        RunRecord changed = RunOf(0.5, test);
        change(changed);
        const std::vector<ComparedRow> told = Compare({ RunOf(1, test), changed });
        ASSERT_EQ(told.size(), 1u);
        EXPECT_NE(Told(told.front()).find(std::string(" ") + verdict), std::string::npos)
            << Told(told.front()) << " for " << verdict;
    }
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
