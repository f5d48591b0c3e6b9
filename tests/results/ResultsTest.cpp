#include "results/Results.h"

#include <cstdlib>
#include <cstring>

#include <gtest/gtest.h>

#include "results/ProcessorImages.h"

namespace {

bool Shows(const Results& results, const std::array<uint8, 256>& picture)
{
    return results.icon->BitsLength() == 256
        && memcmp(results.icon->Bits(), picture.data(), picture.size()) == 0;
}

} // namespace

TEST(Results, ResetStartsARunOnThisMachineFromAllProcessorsDownToOne)
{
    Results results(true);
    results.NewTest("Memory", 1);
    ASSERT_TRUE(results.devices.Insert(new RelatedDevices));
    results.description = "another";
    results.nbrCpus = 99;
    results.Reset();
    EXPECT_EQ(results.Size() + results.devices.Size(), 0);
    EXPECT_TRUE(results.description.EndsWith("MB RAM"));
    int passes = 0;
    for (; results.CycleCpu() && passes < 9; passes++)
        EXPECT_EQ(results.cpu, results.nbrCpus - passes);
    EXPECT_EQ(passes, results.nbrCpus);
}

TEST(Results, ATestIsKnownByItsExactDescription)
{
    Results results(true);
    Metric* sieve = results.NewTest("Sieve", 50);
    EXPECT_EQ(results.NewTest("Sieve", 99), sieve);
    EXPECT_EQ(sieve->cycles, 50);
    EXPECT_NE(results.NewTest("sieve", 1), sieve);
    sieve->Time(1.5f);
    sieve->Time(4);
    results.NewTest("sieve", 1)->Time(0.25f);
    EXPECT_EQ(results.Time(0), 1.75f);
}

TEST(Results, CalibrateCallsRandAsOftenAsTheTestsLoopWould)
{
    Results results(true);
    for (const int calls : { 0, 1, 2, 3, 4, 5, 6, 7 }) {
        SCOPED_TRACE(calls);
        srand(42);
        results.Calibrate(10, calls);
        const int next = rand();
        srand(42);
        for (int i = 0; calls <= 6 && i < 10 * calls; i++)
            static_cast<void>(rand());
        EXPECT_EQ(next, rand());
    }
    results.calibration = 5;
    results.Calibrate(0, 3);
    EXPECT_EQ(results.calibration, 0);
    results.StartTimer();
    results.calibration = 3'600'000'000;
    EXPECT_LT(results.EndTimer(), 0); // the calibration comes off even below zero
}

TEST(Results, AssignmentIsDeepAndKeepsWhatBelongsToTheTarget)
{
    Results from(true);
    from.description = "A (4-x)";
    from.frame.Set(0, 0, 9, 9);
    from.Contains(BPoint(1, 1));
    from.NewTest("Memory", 10)->Time(0.5f);
    auto device = std::make_unique<RelatedDevices>();
    device->Description(2, "Network");
    ASSERT_TRUE(from.devices.Insert(device.release()));

    Results to(false);
    to.NewTest("Old", 1);
    to = from;
    from.NewTest("Memory", 10)->Description("Changed");
    from.devices.First()->Description(3, "Changed");
    EXPECT_TRUE(to == from);
    EXPECT_TRUE(Shows(to, ProcessorOpen));
    ASSERT_EQ(to.Size(), 1);
    EXPECT_STREQ(to.First()->description, "Memory");
    EXPECT_EQ(to.First()->times[0], 0.5f);
    EXPECT_STREQ(to.devices.First()->description, "Network");
    EXPECT_FALSE(to.current);
}
