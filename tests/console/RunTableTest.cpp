#include "console/ResultText.h"
#include "tests/support/Test.h"

namespace {

void Add(RunRecord& record, const TestType& test, int32 processors, double work,
    const std::vector<double>& times, double probe = 0)
{
    Series& series = record.At(test, processors);
    for (const double seconds : times) {
        Span& span = series.spans.emplace_back();
        span.seconds = seconds;
        span.work = work;
        span.probeBefore.core = span.probeAfter.core = probe;
    }
}

} // namespace

TEST(RunTable, WithoutRepeatsHasAColumnForEachProcessorCountOfThePlan)
{
    RunRecord record;
    record.plan.counts = { 16, 1 };
    EXPECT_EQ(RunTable(record), "Test  Units      16 CPU       1 CPU\n");
    Add(record, TestNamed("Strings Copy"), 16, 1000, { 0.5 });
    Add(record, TestNamed("Strings Copy"), 1, 1000, { 0.003 });
    Add(record, TestNamed("Ten Threaded Whetstones"), 1, 0, { 1.5 }); // its time is its figure
    Add(record, TestNamed("Sieve"), 16, 1, { 2 });
    record.At(TestNamed("Sieve"), 16).undone = "its flags are wrong";
    EXPECT_EQ(RunTable(record), ReadFile(TARVEX_TESTS "/console/data/run.table"));
}

TEST(RunTable, WithRepeatsSaysHowFarEachFigureCanBeTrusted)
{
    RunRecord record;
    record.plan.repeats = 6;
    record.bestProbe.core = 1e-4;
    Add(record, TestNamed("Ackerman"), 2, 6000, { 1, 1.01, 1.02, 1.03, 1.04, 1.05 }, 1e-4);
    Add(record, TestNamed("Memory"), 2, 1, { 4e-3, 4e-3, 4e-3, 8e-3, 8e-3, 8e-3 }, 1.2e-4);
    Add(record, TestNamed("Savage"), 2, 300, { 0.1 }, 1e-4);
    Add(record, TestNamed("Disk File Input"), 1, 40000, { 1, 1, 1, 1, 1, 1 }, 1e-4);
    record.At(TestNamed("Disk File Output"), 1).undone = "No space left on device";
    EXPECT_EQ(RunTable(record), ReadFile(TARVEX_TESTS "/console/data/repeated.table"));
    record.plan.untilPercent = 4.8;
    EXPECT_EQ(WideTests(record), "Ackerman (2 CPU), Memory (2 CPU), Savage (2 CPU)");
    record.plan.untilPercent = 1000;
    EXPECT_EQ(WideTests(record), "Memory (2 CPU), Savage (2 CPU)");
}
