// Whole runs with real tests, on a machine that is not there: none of its processors is switched.
#include "engine/Benchmark.h"

#include "Recorder.h"
#include "tests/kits/kernel/MachineTree.h"
#include "tests/support/NoThreads.h"
#include "tests/support/Test.h"

#include <FindDirectory.h>
#include <Path.h>

namespace {

class BenchmarkTest : public testing::Test {
protected:
    const ThisMachine fTree {};
    Benchmark fBenchmark;
    const ScopedRecorder fRecorder;
};

TEST_F(BenchmarkTest, MeasuresTheFixedWorkOfEachGroup)
{
    for (const GroupRun& group : kGroupRuns)
        fBenchmark.*group.selected = group.key != "graphics";
    testing::internal::CaptureStderr();
    EXPECT_EQ(fBenchmark.Go("benchmark", fRecorder.NewMessenger(), 20, true), B_OK);
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_EQ(errors.find("not done"), errors.npos) << errors;
    EXPECT_EQ(fRecorder.WaitFor(11)[7], "Testing Sieve (cpu 1/1)");
    EXPECT_EQ(fRecorder.WaitFor(11).back(), "benchmark: 0");
    char record[kRecordSize];
    EXPECT_TRUE(fBenchmark.results.Write(record));
    const std::regex measured("^.*\t|\\d+\\.\\d{6}|\\d+(?=/5\\.)");
    EXPECT_EQ(std::regex_replace(record, measured, ""),
        "100:126/;101:126/;200:195/;300:300/;400:6000/;500:1600000/;550:100/;600:100/;601:0/;602:0/"
        ";700:/;900:1000/;901:1000/;800:40000/;801:40000/;");
    EXPECT_EQ(fBenchmark.results.devices.Size(), 1) << "the screen";
}

TEST_F(BenchmarkTest, LeavesOutTheTestsWhoseThreadsCannotBeMade)
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

TEST_F(BenchmarkTest, EndsWhenItIsDestroyedAndLeavesNoFile)
{
    for (const char* number : { "0", "1" }) // for a second pass, that it does not end by itself
        fTree.Write("sys/devices/system/cpu/cpu" + std::string(number) + "/online", "1");
    kernel::Processors::SetRoot(fTree.Path());
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

} // namespace
