// Runs on a machine of four processors that is not there: its clock stands but where a test, a call
// of rand() or a wait moves it on, so that every figure of a run is known.
#include "engine/Sitting.h"

#include "engine/Span.h"
#include "tests/kits/kernel/MachineTree.h"
#include "tests/support/Test.h"

#include <MachineRun.h>
#include <Message.h>
#include <ThreadMoment.h>

#include <chrono>

namespace {

bigtime_t gNow = 0; // microseconds
std::string gTold; // what happened, in order, a line for each group
std::string gNotDone; // a test
int gMoments = 0, gProbes = 0, gSieves = 0, gLooks = 0;
std::function<bigtime_t(int)> gNextLook; // at the clock: how much later than the last one

template <typename... Args>
void Tell(const char* format, Args... args)
{
    char text[200];
    snprintf(text, sizeof text, format, args...);
    gTold += text;
}

std::string Used()
{
    std::string text;
    for (const int number : ProcessorsInUse().used)
        text += std::to_string(number);
    return text + "-" + std::to_string(ProcessorsInUse().off.size());
}

// Takes so long for so much work.
void Measure(
    Benchmark* benchmark, const TestType& test, bigtime_t micros, long work, long loops = 0)
{
    Tell("; %s on %s", test.name, Used().c_str());
    MeasureSpan(
        benchmark->results, test, loops, 2, [&] { gNow += micros; },
        [&](Metric& metric) {
            metric.NbrCycles(work);
            return test.name == gNotDone ? "no room" : "";
        });
}

using Time = std::chrono::steady_clock::time_point;

} // namespace

#ifdef __clang__ // the names are mangled by hand, so the types of C++ are no mistake
#pragma clang diagnostic ignored "-Wreturn-type-c-linkage"
#endif
extern "C" {
bigtime_t __wrap__Z11system_timev()
{
    return gNow += gNextLook ? gNextLook(gLooks++) : 0;
}
status_t __wrap__Z6snoozel(bigtime_t micros)
{
    gNow += micros;
    Tell("\nwaits %g s", static_cast<double>(micros) / 1e6);
    return B_OK;
}
int __wrap_rand()
{
    gNow += 1000;
    return 0;
}
Probe __wrap__Z9TakeProbev()
{
    return { gProbes++ % 2 == 0 ? 1e-4 : 1.01e-4, 3e-4 };
}
void __wrap__Z18WaitForSteadyClockv()
{
    gTold += "; steady";
}
// A millisecond is waited from each to the next; the third to fourth are in the heat.
ThreadMoment __wrap__Z16ReadThreadMomentSt8optionalIiE(std::optional<int> processor)
{
    gMoments++;
    EXPECT_EQ(processor.value_or(7), 7);
    EXPECT_EQ(processor.has_value(), gMoments % 2 == 0);
    return { gMoments * 0.001, 0, 7, uint64(gMoments > 3) };
}
status_t __wrap__ZNK10BMessenger11SendMessageEP8BMessageP8BHandlerl(
    const BMessenger*, BMessage* message, BHandler*, bigtime_t)
{
    int32 left = 0;
    const char* status = "";
    EXPECT_EQ(message->FindString("status", &status), B_OK);
    Tell("\n%s", status);
    if (message->FindInt32("left", &left) == B_OK)
        Tell(", %d left", left);
    return B_OK;
}
Time __real__ZNSt6chrono3_V212steady_clock3nowEv();
Time __wrap__ZNSt6chrono3_V212steady_clock3nowEv()
{
    if (!gNextLook)
        return __real__ZNSt6chrono3_V212steady_clock3nowEv();
    gNow += gNextLook(gLooks++);
    return Time(std::chrono::microseconds(gNow));
}
// At even places, as all members are: else a pointer to them would be taken for a virtual one.
[[gnu::aligned(2)]] void __wrap__ZN9Benchmark10RunStringsEv(Benchmark* self)
{
    Measure(self, TestNamed("Strings Copy"), 3000000, 195, 500);
    Measure(self, TestNamed("Strings Compare"), 1000000, 100);
}
[[gnu::aligned(2)]] void __wrap__ZN9Benchmark11RunAckermanEv(Benchmark* self)
{
    self->results.watch->CouldNotBegin(TestNamed("Ackerman"), "no thread");
}
[[gnu::aligned(2)]] void __wrap__ZN9Benchmark8RunSieveEv(Benchmark* self)
{
    Measure(self, TestNamed("Sieve"), 5000000, gSieves++ % 2 == 0 ? 400 : 300);
}
void __real__ZN9Benchmark8RunSieveEv(Benchmark* self);
Probe __real__Z9TakeProbev();
void __real__Z18WaitForSteadyClockv();
}

namespace {

template <typename Run>
struct Told : Run {
    template <typename... Args>
    explicit Told(Args... args) : Run(args...)
    {
        this->strings = this->sieve = true;
        this->messenger = new BMessenger;
    }
    std::string Record() const
    {
        char text[kRecordSize];
        EXPECT_TRUE(this->results.Write(text));
        for (const Metric& metric : this->results)
            EXPECT_STREQ(metric.units, MetricUnits(metric.index));
        return strrchr(text, '\t') + 1;
    }
};

class SittingTest : public testing::Test {
protected:
    SittingTest() : fRoot((Fill(), fTree.Path())) { }
    ~SittingTest() override
    {
        EXPECT_EQ(Used(), "0123-0");
        gNextLook = nullptr; // gtest's is this clock too
    }
    void SetUp() override
    {
        gNow = gMoments = gProbes = gSieves = gLooks = 0;
        gTold = gNotDone = "";
    }
    void Fill() const
    {
        for (const char* number : { "0", "1", "2", "3" })
            fTree.Write("sys/devices/system/cpu/cpu" + std::string(number) + "/online", "1\n");
    }

    const MachineTree fTree;
    const RootGuard fRoot;
};

} // namespace

TEST_F(SittingTest, GoesOnByItsPlanAndSaysHowLongThatWillTake)
{
    Told<Sitting> sitting(RunPlan { {}, { 4, 2, 1 }, 2, {} });
    sitting.ackerman = true;
    sitting.record.bestProbe = { 0.9e-4, 4e-4 };
    for (const int32 processors : { 9, 8, 4, 2, 2, 1 }) // what was measured before
        sitting.record.At(TestNamed("Strings Copy"), processors)
            .spans.push_back({ 1.5, 195, { 1e-4, 3e-4 }, { 1e-4, 3e-4 }, 0, false, {} });
    for (const TestType* test :
        { &TestNamed("Strings Compare"), &TestNamed("Ackerman"), &TestNamed("Sieve") })
        sitting.record.At(*test, 2).undone = "it was too warm";
    sitting.record.At(TestNamed("Sieve"), 1).undone = "it was too warm";
    sitting.onPass = [](int32 processors, bool begins) {
        Tell("\n%s %d: %s", begins ? "begins" : "ends", processors, Used().c_str());
    };
    sitting.onSpan = [](const Series& series) {
        if (!series.undone.empty())
            return Tell("; %s", series.undone.c_str());
        const Span& span = series.spans.back();
        Tell("; %d: %g s for %g, %g to %g us, waited %g ms%s",
            static_cast<int>(series.spans.size()), span.seconds, span.work,
            1e6 * span.probeBefore.core, 1e6 * span.probeAfter.core, 1e3 * span.waited,
            span.isThrottled ? ", hot" : "");
    };
    EXPECT_EQ(sitting.Action(), 0);
    EXPECT_EQ(gTold + "\n", "\n" + ReadFile(TARVEX_TESTS "/engine/data/sitting"));
    EXPECT_EQ(sitting.Record(),
        "100:195/1.750000,0.000000,1.500000,1.750000;"
        "101:100/1.000000,0.000000,0.000000,1.000000;700:400/5.833333,0.000000,0.000000;");
    EXPECT_EQ(sitting.record.bestProbe.core * 1e6, 90);
    EXPECT_EQ(sitting.record.bestProbe.clock * 1e6, 300);
}

TEST_F(SittingTest, RepeatsUntilEachIntervalIsNarrow)
{
    Told<Sitting> sitting(RunPlan { {}, {}, 1, 5 });
    testing::internal::CaptureStderr();
    EXPECT_EQ(sitting.Action(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    gTold.erase(gTold.find("\nTesting Sieve"));
    for (const Series& series : sitting.record.series)
        Tell("\n%s %d: %d", series.test->name, series.processors,
            static_cast<int>(series.spans.size()));
    EXPECT_EQ(gTold + "\n", "\n" + ReadFile(TARVEX_TESTS "/engine/data/until"))
        << "one more than the six that are due, as one was hot";
}

TEST_F(SittingTest, OnceIsAPassForEachProcessorAsInTheWindow)
{
    Told<Sitting> sitting(RunPlan {});
    EXPECT_EQ(sitting.Action(), 0);
    const std::string told = gTold;
    EXPECT_EQ(told + "\n", "\n" + ReadFile(TARVEX_TESTS "/engine/data/once"));
    EXPECT_EQ(sitting.Record(),
        "100:195/2.000000,2.000000,2.000000,2.000000;101:100/1.000000,1.000000,1.000000,1.000000;"
        "700:400/5.000000,6.666667,5.000000,6.666667;");

    Told<Benchmark> benchmark;
    SharedSpans shared;
    benchmark.results.watch = &shared;
    for (const bool isSlow : { true, false }) {
        SetUp();
        gNotDone = isSlow ? "Sieve" : "";
        shared.Reset({ isSlow ? 0.8e-4 : 1e-4, 3e-4 });
        EXPECT_EQ(benchmark.Action(), 0);
        EXPECT_EQ(gTold, std::regex_replace(told, std::regex(", \\d+ left"), ""));
        EXPECT_EQ(shared.Count(), isSlow ? 8 : 12);
        EXPECT_EQ(shared.CountShared(), isSlow ? 8 : 1) << "the one that was hot";
        EXPECT_EQ(shared.Sustained().core, 1e-4);
    }
    EXPECT_EQ(benchmark.Record(), // the work is that of the last pass
        "100:195/2.000000,2.000000,2.000000,2.000000;101:100/1.000000,1.000000,1.000000,1.000000;"
        "700:300/5.000000,5.000000,5.000000,5.000000;");
    EXPECT_FALSE(static_cast<SpanWatch&>(shared).WantsPixels());
    SpanProbe probe;
    probe.Begins();
    probe.Ended();
    EXPECT_GT(probe.SpanOf(TestNamed("Memory"), 1, 1).waited, 0);
    EXPECT_EQ(probe.SpanOf(TestNamed("Graphics Lines Flushed"), 1, 1).waited, 0) << "by design";
}

TEST_F(SittingTest, AProbeIsTheBestOfThreeAndTheClockIsSteadyOnceNoBetterOneComes)
{
    const bigtime_t micros[] = { 3, 5, 1, 4, 2, 6 }; // of both loops in turn
    gNextLook = [&](int look) { return look % 2 == 1 ? micros[look / 2] : 0; };
    const Probe best = __real__Z9TakeProbev();
    EXPECT_EQ(std::round(best.core * 1e6) * 10 + std::round(best.clock * 1e6), 14);

    // Each probe looks twelve times, and before each but the first one the time is looked at too.
    const int rows[][3] = {
        // how long a look takes, also after sixty, and how many there are
        { 1000, 1000, 1 + 12 + 8 * 13 }, { 1000, 991, 1 + 12 + 8 * 13 }, // hardly better
        { 1000, 980, 1 + 12 + 11 * 13 }, { 2000, 2000, 1 + 12 + 7 * 13 + 1 } // too long
    };
    for (const auto& [first, later, looks] : rows) {
        gNextLook = [first = first, later = later](int look) { return look < 60 ? first : later; };
        gLooks = 0;
        __real__Z18WaitForSteadyClockv();
        EXPECT_EQ(gLooks, looks);
    }
}

TEST_F(SittingTest, TheSieveIsPassedUntilFiveSecondsAreOver)
{
    const bigtime_t looks[] = { 0, 0, 4999999, 1, 0 }; // at the start of both, behind each pass ...
    gNextLook = [&](int look) { return looks[look]; };
    Told<Benchmark> benchmark;
    __real__ZN9Benchmark8RunSieveEv(&benchmark);
    EXPECT_EQ(benchmark.Record(), "700:2/5.000000;");
}
