// The bytes are a results file.
#include "results/Results.h"
#include "results/ResultsFile.h"
#include "tests/fuzz/Require.h"

#include <cmath>
#include <cstdio>
#include <cstring>

namespace {

void CheckMachine(Results& machine)
{
    Require(machine.nbrCpus >= 0 && machine.nbrCpus <= 9, "one digit of processors");
    for (Metric* metric = machine.First(); metric; metric = machine.Next()) {
        Require(metric->nbrTimes >= 0 && metric->nbrTimes <= kMostTimes, "at most eight times");
        for (const float seconds : metric->times)
            Require(!std::isnan(seconds), "a time is a number");
        float limit = INFINITY;
        for (int bars = 0; metric->NextSmallestRate(limit) >= 0; bars++)
            Require(bars < kMostTimes, "each time is drawn once");
    }
    char record[kRecordSize + 1];
    record[kRecordSize] = '#';
    machine.Write(record);
    Require(record[kRecordSize] == '#', "a record keeps to its place");
    if (!PackedRecord::Of(record).IsEmpty()) {
        Results again(false);
        again.Read(record);
        char second[kRecordSize];
        again.Write(second);
        Require(strcmp(record, second) == 0, "what is packed is written as it was");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static FILE* const sQuiet = freopen("/dev/null", "w", stderr);
    FILE* file = size > 0 ? fmemopen(const_cast<uint8_t*>(data), size, "r") : nullptr;
    if (!file || !sQuiet)
        return 0;
    ResultList machines;
    ReadResults(file, "input", machines);
    fclose(file);
    for (Results* machine = machines.First(); machine; machine = machines.Next())
        CheckMachine(*machine);
    machines.FirstCurrent();
    static_cast<void>(machines.MaxRate());
    FILE* table = fopen("/dev/null", "w");
    machines.Save(table, machines.MaxNbrCpus());
    fclose(table);
    return 0;
}
