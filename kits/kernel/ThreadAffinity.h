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
    // Of a thread (its system's number; 0: the caller). False if it has ended.
    [[nodiscard]] bool ReadFrom(pid_t tid);
    // 0 or an error number.
    [[nodiscard]] int ApplyTo(pid_t tid) const;

    [[nodiscard]] bool Has(int number) const { return Word(number) >> (number % 64) & 1; }
    void Add(int number) { Word(number) |= uint64 { 1 } << (number % 64); }
    void Remove(int number) { Word(number) &= ~(uint64 { 1 } << (number % 64)); }
    void Remove(const ProcessorSet& others);
    [[nodiscard]] bool IsEmpty() const { return *this == ProcessorSet(); }
    bool operator==(const ProcessorSet&) const = default;

private:
    const uint64& Word(int number) const { return fWords[static_cast<size_t>(number) / 64]; }
    uint64& Word(int number) { return fWords[static_cast<size_t>(number) / 64]; }

    std::array<uint64, 128> fWords {};
};

// Takes processors out of the masks of all threads of the process and puts them back. Threads
// started meanwhile have the mask of their creator, so they are caught too. Not safe for use by two
// threads at once.
class ThreadAffinity {
public:
    // To be called before the system itself switches the processor off.
    void Remember(int number);
    // Takes it from every thread; one that has no other left gets those of instead. 0 or an error
    // number, and then nothing is changed.
    [[nodiscard]] int TakeAway(int number, const ProcessorSet& instead);
    // Gives it back to every thread that had it, and to those that started later.
    void GiveBack(int number);

private:
    void StartRemembering();
    [[nodiscard]] int TakeFrom(pid_t tid, const ProcessorSet& instead, bool& changed) const;
    void GiveBackTo(pid_t tid, int number, bool& changed) const;

    // What each thread had when the first processor was taken. A thread that is not here is
    // younger.
    std::map<pid_t, ProcessorSet> fBefore;
    ProcessorSet fTaken;
};
} // namespace kernel
