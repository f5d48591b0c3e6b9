// Which processors the threads of this process may run on.
#pragma once

#include "SupportDefs.h"

#include <array>
#include <map>
#include <sys/types.h>

namespace kernel {
// A set of processors by the system's numbers, 0 to kMaxProcessorNumber.
class ProcessorSet {
public:
    // Those that a thread of this process may use (its system's number), the ones that are off
    // included. False, and nothing changed, if it has ended.
    [[nodiscard]] bool ReadFrom(pid_t tid);
    // 0 or an error number.
    [[nodiscard]] int ApplyTo(pid_t tid) const;

    [[nodiscard]] bool Has(int number) const { return Word(number) >> (number % 64) & 1; }
    void Add(int number) { Word(number) |= uint64 { 1 } << (number % 64); }
    void Add(const ProcessorSet& others);
    bool operator==(const ProcessorSet&) const = default;

private:
    const uint64& Word(int number) const { return fWords[static_cast<size_t>(number) / 64]; }
    uint64& Word(int number) { return fWords[static_cast<size_t>(number) / 64]; }

    std::array<uint64, 128> fWords {};
};

// Confines all threads of the process to one set of processors and gives back what each had.
// Threads started meanwhile have the mask of their creator, so they are caught too. Not safe for
// use by two threads at once.
class ThreadAffinity {
public:
    // From now on every thread has exactly these, also one that had fewer, as far as the system
    // lets the process use them. 0 or an error number, and then the threads are as before the call.
    [[nodiscard]] int Confine(const ProcessorSet& processors);
    // Every thread has what it had before the first Confine(); one that started later, what they
    // had together.
    void Release();

private:
    void StartRemembering();

    std::map<pid_t, ProcessorSet> fBefore; // empty: the threads are not confined
    ProcessorSet fBeforeTogether;
    ProcessorSet fConfinedTo;
};
} // namespace kernel
