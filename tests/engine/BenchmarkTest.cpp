// Whole runs, which switch this machine's processors off and on.
#include "engine/Benchmark.h"

#include "Recorder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace {

std::string OnlineProcessors()
{
    std::string text;
    std::ifstream file("/sys/devices/system/cpu/online");
    std::getline(file, text);
    return text;
}

// Every run leaves the processors as it found them; if not, they are switched on here.
class BenchmarkRun : public testing::Test {
protected:
    void TearDown() override
    {
        EXPECT_EQ(OnlineProcessors(), fBefore);
        for (int32 processor = 1; processor < fCount; processor++)
            _kset_cpu_state_(processor, 1);
    }

    const std::string fBefore = OnlineProcessors();
    Benchmark fBenchmark;
    const int32 fCount = fBenchmark.results.nbrCpus;
    const ScopedRecorder fRecorder;
};

TEST_F(BenchmarkRun, AnnouncesEveryGroupInOrderOncePerProcessorCount)
{
    for (bool Benchmark::*flag : { &Benchmark::fileIO, &Benchmark::fileLifeCycle,
             &Benchmark::dhrystone, &Benchmark::ackerman, &Benchmark::memory, &Benchmark::strings })
        fBenchmark.*flag = true;
    Texts expected;
    for (int cpu = fCount; cpu > 0; cpu--)
        for (const char* group :
            { "Strings", "Memory", "Ackerman", "Dhrystone", "Disk LifeCycle", "Disk Input/Output" })
            expected.push_back("Testing " + std::string(group) + " (cpu " + std::to_string(cpu)
                + "/" + std::to_string(fCount) + ")");
    expected.push_back("benchmark: 0");

    ASSERT_EQ(fBenchmark.Go("benchmark", fRecorder.NewMessenger(), 20, false), B_OK);
    EXPECT_EQ(fRecorder.WaitFor(expected.size()), expected);
}

TEST_F(BenchmarkRun, TimesEachTestOncePerPassAndReplacesTheFormerRun)
{
    fBenchmark.memory = true;
    ASSERT_EQ(fBenchmark.Go("benchmark", nullptr, 20, true), B_OK); // silently
    fBenchmark.memory = false;
    fBenchmark.ackerman = true;
    ASSERT_EQ(fBenchmark.Go("benchmark", nullptr, 20, true), B_OK);
    ASSERT_EQ(fBenchmark.results.Size(), 1);
    const Metric* metric = fBenchmark.results.First();
    EXPECT_STREQ(metric->description, "Ackerman");
    ASSERT_EQ(metric->nbrTimes, fCount);
    for (int slot = 0; slot < fCount; slot++)
        EXPECT_GT(metric->Rate(slot), 0.0) << slot;
}

TEST_F(BenchmarkRun, WithoutAGroupRestsBetweenPassesAndReportsItsEnd)
{
    const bigtime_t start = system_time();
    ASSERT_EQ(fBenchmark.Go("benchmark", fRecorder.NewMessenger(), 20, false), B_OK);
    EXPECT_EQ(fRecorder.WaitFor(1), Texts { "benchmark: 0" });
    EXPECT_GE(system_time() - start, (fCount - 1) * 1000000) << "no rest between the passes";
    EXPECT_EQ(fBenchmark.results.Size(), 0);
}

TEST_F(BenchmarkRun, EndsWhenTheBenchmarkIsDestroyed)
{
    {
        Benchmark benchmark;
        benchmark.sieve = true;
        ASSERT_EQ(benchmark.Go("benchmark", fRecorder.NewMessenger(), 20, false), B_OK);
        fRecorder.WaitFor(1); // it has begun
    }
    EXPECT_EQ(find_thread("benchmark"), B_NAME_NOT_FOUND);
    EXPECT_EQ(fRecorder.WaitFor(1).size(), 1u) << "a killed thread reports no end";
}

} // namespace
