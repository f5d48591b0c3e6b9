// The driver of a run: every selected test group, once per processor count.
#pragma once

#include "engine/LibThread.h"
#include "results/Results.h"

#include <functional>

// One object serves any number of runs; a run replaces the figures of the one before. Set the
// flags, Go(), wait for 'LThC', then read results: no lock guards them while the thread runs.
//
// Destroying it in the middle of a run ends the run without switching processors back on; the
// kernel kit gives them back when the program ends.
class Benchmark : public LibThread {
public:
    Benchmark();
    ~Benchmark() override;

    // One complete run: a pass with all processors, then one with each smaller count. Slot k of
    // every metric belongs to pass k. Returns 0.
    int32 Action() override;
    // Sends 'BmkS' with the text "Testing %s (cpu %d/%d)". Does nothing without a messenger.
    void UpdateStatus(const char* test);

    // The groups. Each records its measurement of this pass in results.
    void RunGraphics();
    void RunStrings();
    void RunMemory();
    void RunSavage();
    void RunAckerman();
    void RunDhrystone();
    void RunFourier();
    void RunWhetstone();
    void RunSieve();
    void RunFileLifeCycle();
    void RunFileIO();

    // Ackermann's function of m, n >= 0. Only small arguments: A(4, 2) has 19,729 digits.
    static int Ackerman(const int& m, const int& n);

    int32 cpu = 0; // the number of processors of this pass, less one
    Results results;

    // The groups that a run measures.
    bool graphics = false;
    bool strings = false;
    bool memory = false;
    bool savage = false;
    bool ackerman = false;
    bool dhrystone = false;
    bool fourier = false;
    bool whetstone = false;
    bool sieve = false;
    bool fileIO = false;
    bool fileLifeCycle = false;

private:
    // One test: its fixed name, nominal work, loops to calibrate (0: no counted loop), type and
    // unit.
    struct Test {
        const char* name;
        long cycles;
        long loops;
        long index;
        const char* units;
    };

    void RunSelectedGroups();
    // Times kernel() as the next slot of the test's metric. Returns the metric; null, and nothing
    // done, if there is no memory for it.
    Metric* Measure(const Test& test, const std::function<void()>& kernel);
    // The same for a kernel that says whether it did its work; if not, no time is recorded, and
    // the result is null.
    Metric* MeasureIfDone(const Test& test, const std::function<bool()>& kernel);
};
