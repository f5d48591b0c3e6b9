#include "console/RatesAsText.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

std::string ComparisonTable(Comparison& comparison)
{
    char* text = nullptr;
    size_t size = 0;
    FILE* out = open_memstream(&text, &size);
    PrintComparison(comparison, out);
    fclose(out);
    const std::string table(text, size);
    free(text);
    return table;
}

void AddMachine(ResultList& machines, const char* record)
{
    auto* machine = new Results(false);
    machine->Read(record);
    machines.Insert(machine);
}

} // namespace

TEST(ComparisonTable, ShowsEachTestWithAllMachinesThatHaveIt)
{
    Comparison comparison;
    ResultList& machines = comparison.machines;
    EXPECT_EQ(ComparisonTable(comparison), "");
    AddMachine(machines, "First (2-x)\t700:400/1.0,4.0;");
    AddMachine(machines, "Second\x1b[2J (1-y)\t200:50/1.0;700:200/1.0;");
    EXPECT_EQ(ComparisonTable(comparison),
        "Sieve (IPS)\n"
        "       2 CPU       1 CPU   Percent  Machine\n"
        "       400.0       100.0     100.0  First (2-x)\n"
        "                   200.0      50.0  Second\\x1b[2J (1-y)\n"
        "\n"
        "Memory (MB/sec)\n"
        "       2 CPU       1 CPU   Percent  Machine\n"
        "                    50.0         -  Second\\x1b[2J (1-y)\n");
}

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
