#include "results/RunComparison.h"

#include "foundation/PlainText.h"
#include "tests/results/MadeRuns.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"

namespace {

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

// "name count percent verdict (why)" of each row, behind the clock where it is known.
std::string Told(const std::vector<RunRecord>& runs)
{
    const auto clock = ClockPercent(runs[0], runs[1]);
    std::string told = clock ? "clock " + LibFixedText(*clock, 1) + "\n" : "";
    for (const ComparedRow& row : Compare(runs)) {
        const std::string percent = row.percent ? LibFixedText(*row.percent, 1) : "-";
        told += row.test->name + std::string(" ") + std::to_string(row.processors) + " " + percent
            + " " + VerdictText(row.judgement.verdict)
            + (row.why.empty() ? "" : " (" + row.why + ")") + "\n";
    }
    return told;
}

void SetProbes(RunRecord& run, double Probe::*loop, double seconds)
{
    for (Span& span : run.series.front().spans)
        span.probeBefore.*loop = span.probeAfter.*loop = seconds;
}

// What a case may change, by a word that may have a number: "best=0.0001".
const std::map<std::string, void (*)(RunRecord&, double)> kChanges = {
    { "version", [](RunRecord& run, double) { run.build.version = "1.2.7"; } },
    { "compiler", [](RunRecord& run, double) { run.build.compiler = "Clang 14"; } },
    { "flags", [](RunRecord& run, double) { run.build.flags = "-O3"; } },
    { "size", [](RunRecord& run, double) { run.displaySize = "800x600x24"; } },
    { "server", [](RunRecord& run, double) { run.display->vendor = "Other"; } },
    { "headless", [](RunRecord& run, double) { run.display.reset(); } },
    { "machine", [](RunRecord& run, double) { run.machine = "Another PC (2-x)"; } },
    { "model", [](RunRecord& run, double) { run.details.processorModel = "Another"; } },
    { "spans",
        [](RunRecord& run, double count) {
            run.series.front().spans.resize(static_cast<size_t>(count));
        } },
    { "first", [](RunRecord& run, double time) { run.series.front().spans[0].seconds = time; } },
    { "four",
        [](RunRecord& run, double seconds) {
            for (int i = 0; i < 4; i++)
                run.series.front().spans[i].seconds = seconds;
        } },
    { "shared",
        [](RunRecord& run, double core) {
            for (int i = 0; i < 4; i++)
                run.series.front().spans[i].probeAfter.core = core;
        } },
    { "waited",
        [](RunRecord& run, double seconds) {
            Span& span = run.series.front().spans[8];
            span.waited = span.seconds = seconds;
        } },
    { "hot",
        [](RunRecord& run, double seconds) {
            run.series.front().spans[9].seconds = seconds;
            run.series.front().spans[9].isThrottled = true;
        } },
    { "best",
        [](RunRecord& run, double seconds) {
            run.bestProbe = { seconds, seconds };
        } },
    { "bestcore", [](RunRecord& run, double seconds) { run.bestProbe.core = seconds; } },
    { "cores", [](RunRecord& run, double seconds) { SetProbes(run, &Probe::core, seconds); } },
    { "clocks", [](RunRecord& run, double seconds) { SetProbes(run, &Probe::clock, seconds); } },
    { "undone", [](RunRecord& run, double) { run.series.back().undone = "no window"; } },
    { "empty", [](RunRecord& run, double) { run.series.back().spans.clear(); } },
};

// Of "400 2 0.5 6000 version": tests by their numbers, each at a count with its seconds and its
// work, and changes.
RunRecord RunOf(const std::string& text)
{
    RunRecord run = MadeRun("PC (2-x)");
    std::istringstream parts(text);
    for (std::string part; parts >> part;) {
        int32 count = 0;
        double seconds = 0, work = 0;
        const size_t end = std::min(part.find('='), part.size());
        if (const auto change = kChanges.find(part.substr(0, end)); change != kChanges.end())
            change->second(run, std::atof(part.c_str() + std::min(end + 1, part.size())));
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

TEST(RunComparison, SortsAndChecksABuild)
{
    const RunRecord fell = RunOf("400 2 1.12 6000 700 2 1 6000");
    const RunRecord before = RunOf("400 2 1 6000 700 2 1 6000");
    const RunRecord rose = RunOf("400 2 0.9 6000");
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
