// The driver of a run: every selected test group, once per processor count.
#pragma once

#include "engine/LibThread.h"
#include "results/Results.h"
#include "results/TestCatalogue.h"

#include <functional>
#include <string>
#include <string_view>

// A machine with other processors on than a moment ago settles this long. So does one on which the
// program began a moment ago: a third of the first spans of 5 ms took 1.4 ms longer at once, none
// of 30 after a second, whatever had been executed in between.
inline constexpr bigtime_t kSettleMicros = 1000000;

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

protected:
    // "Testing %s (cpu %d/%d)"
    [[nodiscard]] std::string StatusText(const char* test) const;

private:
    // Says, once the clock has stopped, why the test's work was not done, or "".
    using Finish = std::function<std::string(Metric&)>;

    void RunSelectedGroups();
    // Times kernel() as the next slot of the test's metric, see MeasureSpan; loops: those of the
    // kernel to calibrate, 0 where it is no counted loop. What finish says goes to standard error
    // too.
    void Measure(const TestType& test, long loops, const std::function<void()>& kernel,
        const Finish& finish);
    // For a test that cannot even begin.
    void TellUndone(const TestType& test, const std::string& why);
};

// What a test's proof says: "" where the work was done, else why it was not.
inline std::string Unless(bool isDone, const char* why)
{
    return isDone ? "" : why;
}

// How a run measures each group: beside kTestGroups, row by row.
struct GroupRun {
    std::string_view key;
    bool Benchmark::*selected;
    void (Benchmark::*run)();
};

inline constexpr GroupRun kGroupRuns[] = {
    { "graphics", &Benchmark::graphics, &Benchmark::RunGraphics },
    { "strings", &Benchmark::strings, &Benchmark::RunStrings },
    { "memory", &Benchmark::memory, &Benchmark::RunMemory },
    { "savage", &Benchmark::savage, &Benchmark::RunSavage },
    { "ackerman", &Benchmark::ackerman, &Benchmark::RunAckerman },
    { "dhrystone", &Benchmark::dhrystone, &Benchmark::RunDhrystone },
    { "fourier", &Benchmark::fourier, &Benchmark::RunFourier },
    { "whetstone", &Benchmark::whetstone, &Benchmark::RunWhetstone },
    { "sieve", &Benchmark::sieve, &Benchmark::RunSieve },
    { "lifecycle", &Benchmark::fileLifeCycle, &Benchmark::RunFileLifeCycle },
    { "io", &Benchmark::fileIO, &Benchmark::RunFileIO },
};
