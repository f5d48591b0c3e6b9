#include "console/RatesAsText.h"

#include <gtest/gtest.h>

#include <string>

TEST(RateTable, HasAColumnForEachProcessorCountFromTheGreatestDown)
{
    Results results(false);
    results.nbrCpus = 2;
    EXPECT_EQ(RateTable(results), "Test  Units       2 CPU       1 CPU\n");
    Metric* copy = results.NewTest("Strings Copy", 1000);
    copy->Units("MegaChars/sec");
    copy->Time(0.5f);
    copy->Time(0.003f);
    Metric* sequential = results.NewTest("Ten", 0); // its times are its rates
    sequential->Time(0); // left out
    sequential->Time(1.5f);
    results.NewTest("Sieve", 1)->Time(2.0f); // no units, and no time for one processor
    EXPECT_EQ(RateTable(results),
        "Test          Units               2 CPU       1 CPU\n"
        "Strings Copy  MegaChars/sec      2000.0    333333.3\n"
        "Ten                                   -         1.5\n"
        "Sieve                               0.5\n");
}
