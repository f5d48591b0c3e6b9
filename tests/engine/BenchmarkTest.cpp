// Whole runs, which switch this machine's processors off and on.
#include "engine/Sitting.h"
#include "Recorder.h"
#include "tests/support/NoThreads.h"
#include "tests/support/OnlineProcessors.h"
#include "tests/support/Test.h"

#include <FindDirectory.h>
#include <MachineRun.h>
#include <Path.h>

namespace {

// Every run leaves the processors as it found them; if not, they are switched on here.
class BenchmarkRun : public testing::Test {
protected:
    void TearDown() override
    {
        EXPECT_EQ(ReadFile("/sys/devices/system/cpu/online"), fBefore);
        for (int32 processor = 1; processor < fCount; processor++)
            _kset_cpu_state_(processor, 1);
    }

    const std::string fBefore = OnlineProcessors();
    Benchmark fBenchmark;
    const int32 fCount = fBenchmark.results.nbrCpus;
    const ScopedRecorder fRecorder;
};

TEST_F(BenchmarkRun, LeavesOutTheTestsWhoseThreadsCannotBeMade)
{
    const NoThreads noThreads;
    ASSERT_TRUE(fBenchmark.results.CycleCpu()); // the first pass
    testing::internal::CaptureStderr();
    fBenchmark.RunFileLifeCycle();
    fBenchmark.RunWhetstone();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "<Disk File Creation> was not done: Resource temporarily unavailable\n"
        "<Disk File Deletion> was not done: Resource temporarily unavailable\n"
        "No thread for <WhetstoneThread_0>\n"
        "<Ten Threaded Whetstones> was not done: Resource temporarily unavailable\n");
    EXPECT_LT(fBenchmark.Go("benchmark", fRecorder.NewMessenger(), 20, false), B_OK);
}

TEST_F(BenchmarkRun, EndsWhenTheBenchmarkIsDestroyedAndLeavesNoFile)
{
    BPath folder;
    ASSERT_EQ(find_directory(B_COMMON_TEMP_DIRECTORY, &folder, true), B_OK);
    const std::pair<bool Benchmark::*, std::string> rows[] = { // and what shows it under way
        { &Benchmark::sieve, "" }, { &Benchmark::whetstone, "" },
        { &Benchmark::fileLifeCycle, "/tarvex_lc_test.0" },
        { &Benchmark::fileIO, "/tarvex_io_test" }
    };
    for (const auto& [group, path] : rows) {
        const size_t before = fRecorder.WaitFor(0).size();
        {
            Benchmark benchmark;
            benchmark.*group = true;
            ASSERT_EQ(benchmark.Go("benchmark", fRecorder.NewMessenger(), 20, false), B_OK);
            fRecorder.WaitFor(before + 1); // it has begun
            while (!std::filesystem::exists(folder.Path() + path) && find_thread("benchmark") > 0)
                snooze(100);
        }
        for (const char* thread : { "benchmark", "CreateThread", "WhetstoneThread_9" })
            EXPECT_EQ(find_thread(thread), B_NAME_NOT_FOUND);
        EXPECT_EQ(fRecorder.WaitFor(before).size(), before + 1) << "a killed thread reports no end";
        EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
    }
}

// In the order of the plan, group by group in each round; what the record holds already is not
// measured again.
TEST_F(BenchmarkRun, OfASittingMeasuresWhatItsRecordLacks)
{
    RunPlan plan;
    plan.counts = { 1, fCount };
    plan.repeats = 3;
    if (fCount == 1)
        plan.counts.pop_back();
    Sitting sitting(plan);
    sitting.memory = sitting.ackerman = true;
    Series& known = sitting.record.At(TestNamed("Memory"), 1);
    known.spans.resize(2);
    known.spans[0].seconds = known.spans[1].seconds = 100;
    std::vector<std::string> order;
    sitting.onSpan = [&order](const Series& series) {
        const int32 used = static_cast<int32>(ProcessorsInUse().used.size());
        EXPECT_EQ(used, series.processors);
        if (series.processors == 1)
            order.push_back(series.test->name);
        const Span& span = series.spans.back();
        EXPECT_GT(span.seconds, 0);
        for (const Probe& probe : { span.probeBefore, span.probeAfter }) {
            EXPECT_GT(probe.core, 0);
            EXPECT_GT(probe.clock, 0);
        }
        EXPECT_GT(span.work, 0);
    };
    ASSERT_EQ(sitting.Go("benchmark", nullptr, 20, true), B_OK);
    EXPECT_EQ(order, std::vector<std::string>({ "Ackerman", "Ackerman", "Memory", "Ackerman" }));
    for (const Series& series : sitting.record.series)
        EXPECT_EQ(series.spans.size(), 3u) << series.test->name;
    EXPECT_EQ(sitting.record.series.size(), 2 * plan.counts.size());
    // As a results file holds it: the estimate, here the middle one of three.
    Metric probe;
    probe.Description("Memory");
    ASSERT_TRUE(sitting.results.MakeCurrent(probe));
    EXPECT_EQ(sitting.results.Current()->times[fCount - 1], 100.0f);
}

} // namespace
