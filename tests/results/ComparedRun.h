// What tests of the comparison compare.
#pragma once

#include "results/Results.h"
#include "tests/support/TempFolder.h"

// A run whose sieve is as fast as 400, 100 with one processor, and memory 50.
inline void FillRun(Results& run)
{
    run.Clear();
    run.description = "This (2-x)";
    run.nbrCpus = 2;
    Metric* sieve = run.NewTest("Sieve", 400);
    sieve->Index(700);
    sieve->Units("IPS");
    sieve->Time(1);
    sieve->Time(4);
    run.NewTest("Memory", 50)->Time(1);
}

// A file of a machine with two devices whose sieve is as fast as 200 with one processor.
inline std::string MachineFile(const TempFolder& folder)
{
    const std::string record = "Other (1-y)\t-1:a screen\t6:Maker, Bridge\t700:200/1.0;";
    WriteFile(folder / "other", "1.0\n" + std::to_string(record.size()) + "\n" + record + "\n");
    return folder / "other";
}
