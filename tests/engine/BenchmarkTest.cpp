// Whole runs, which switch this machine's processors off and on.
#include "engine/Sitting.h"
#include "Recorder.h"
#include "tests/support/NoThreads.h"
#include "tests/support/OnlineProcessors.h"

#include <FindDirectory.h>
#include <MachineRun.h>
#include <Path.h>

#include <gtest/gtest.h>

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

TEST_F(BenchmarkRun, TimesEachTestOncePerPassAndReplacesTheFormerRun)
{
    fBenchmark.memory = true;
    ASSERT_EQ(fBenchmark.Go("benchmark", nullptr, 20, true), B_OK); // silently
    fBenchmark.memory = false;
    fBenchmark.dhrystone = fBenchmark.ackerman = true;
    Entries expected;
    for (int cpu = fCount; cpu > 0; cpu--)
        for (const char* group : { "Ackerman", "Dhrystone" })
            expected.push_back("Testing " + std::string(group) + " (cpu " + std::to_string(cpu)
                + "/" + std::to_string(fCount) + ")");
    expected.push_back("benchmark: 0");
    const bigtime_t start = system_time();
    ASSERT_EQ(fBenchmark.Go("benchmark", fRecorder.NewMessenger(), 20, false), B_OK);
    EXPECT_EQ(fRecorder.WaitFor(expected.size()), expected);
    EXPECT_GE(system_time() - start, (fCount - 1) * 1000000) << "no rest between the passes";
    LinkList<RelatedDevices>& devices = fBenchmark.results.devices;
    ASSERT_NE(devices.First(), nullptr);
    EXPECT_EQ(devices.Current()->type, -1);
    while (devices.Next())
        EXPECT_GE(devices.Current()->type, 0) << "the screen is named once";
    const Metric* metric = fBenchmark.results.First();
    ASSERT_NE(metric, nullptr);
    EXPECT_STREQ(metric->description, "Ackerman"); // of this run only
    EXPECT_EQ(metric->nbrTimes, fCount);
}

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

TEST_F(BenchmarkRun, CompletesWithAProcessorSwitchedOffUnderItsTenThreads)
{
    if (fCount == 1)
        GTEST_SKIP() << "needs two processors";
    fBenchmark.whetstone = true;
    const int32 priority = set_thread_priority(find_thread(nullptr), 120); // above theirs
    ASSERT_EQ(fBenchmark.Go("benchmark", fRecorder.NewMessenger(), 20, false), B_OK);
    thread_info info {};
    while (find_thread("benchmark") > 0
        && (get_thread_info(find_thread("WhetstoneThread_0"), &info) != B_OK
            || info.state != B_THREAD_RUNNING))
        snooze(100);
    EXPECT_EQ(info.state, B_THREAD_RUNNING);
    EXPECT_EQ(info.priority, 100);
    EXPECT_EQ(_kset_cpu_state_(1, 0), B_OK);
    set_thread_priority(find_thread(nullptr), priority);
    EXPECT_EQ(fRecorder.WaitFor(size_t(fCount) + 1).back(), "benchmark: 0");
    ASSERT_EQ(fBenchmark.results.Size(), 3);
    const Metric* metric = fBenchmark.results.First();
    while (const Metric* next = fBenchmark.results.Next())
        metric = next;
    EXPECT_STREQ(metric->description, "Ten Threaded Whetstones");
    ASSERT_EQ(metric->nbrTimes, fCount);
    for (int slot = 0; slot < fCount; slot++)
        EXPECT_GT(metric->times[slot], 0.005f) << "did not wait for a billion instructions";
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
    const Metric* memory = sitting.results.Get(&probe);
    ASSERT_NE(memory, nullptr);
    EXPECT_EQ(memory->times[fCount - 1], 100.0f);
}

} // namespace
