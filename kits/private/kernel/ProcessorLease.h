// Switching processors through the system, as a lease that ends with the process.
#pragma once

#include "RunNotes.h"
#include "SupportDefs.h"

#include <array>
#include <string>
#include <vector>

namespace kernel {
// Up to eight processors' switches. A small process of its own, the keeper, does the switching on
// request, so it always knows what is off, and switches that on again when the connection ends, in
// whatever way this process does. It starts with the first request; one that was killed or stopped
// is replaced, with a line on standard error. What is off is noted too (see RunNotes), for the case
// that both are killed. Not safe for use by two threads at once.
class ProcessorLease {
public:
    // The switches below root of the processors with these numbers, eight at most; an index is one
    // of theirs.
    ProcessorLease(const std::string& root, const std::vector<int>& numbers);
    // As End().
    ~ProcessorLease();
    ProcessorLease(const ProcessorLease&) = delete;
    ProcessorLease& operator=(const ProcessorLease&) = delete;

    // Whether the program may use the switch of the processor at this index of numbers.
    [[nodiscard]] bool CanSwitch(size_t index) const;
    // 0, or the error number of opening the switch, of noting it or of the system's refusal; the
    // processor is as before then. EALREADY: another run that lives has switched it off. Waits for
    // as long as the system takes, but not for a keeper that is stopped.
    [[nodiscard]] int Set(size_t index, bool on);
    // Switches on what is off; does not depend on the keeper.
    void End();

private:
    [[nodiscard]] int Note();
    [[nodiscard]] int SwitchOff(size_t index);
    [[nodiscard]] int SwitchOn(size_t index);
    [[nodiscard]] int AskKeeper(size_t index, bool on);
    [[nodiscard]] bool Ask(size_t index, bool on, int& answer);
    [[nodiscard]] bool Receive(void* data, size_t size);
    [[nodiscard]] int Start();
    void Stop();

    static constexpr size_t kMost = 8;
    const std::string fRoot;
    const std::vector<int> fNumbers;
    std::array<int, kMost> fSwitches; // descriptors, or minus the error number of opening it
    std::array<bool, kMost> fIsOff {}; // or perhaps
    int fConnection = -1;
    RunNote fNote;
    int fNoteError = 0; // why there is no place for one
};

// Switches by an open switch; on again and again for a second while the system is busy with another
// one. 0 or an error number. May be called in a signal handler.
[[nodiscard]] int WriteSwitch(int file, bool on);
} // namespace kernel
