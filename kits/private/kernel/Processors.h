// The processors that this run counts, by the platform's numbers 0 to 7, and their switching.
#pragma once

#include "CpuTopology.h"
#include "MachineRun.h"
#include "Mutex.h"
#include "OS.h"
#include "ProcessorLease.h"
#include "ThreadAffinity.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace kernel {
// What is found when it is made stays for its life: a processor that it has switched off still
// counts, as does one that another run has; one that was off otherwise never does.
class Processors {
public:
    // The machine below root. The running one (root "") is limited to what the process may use.
    // Counts no more than most, at least one.
    explicit Processors(const std::string& root, size_t most = B_MAX_CPU_COUNT);
    Processors(const Processors&) = delete;
    Processors& operator=(const Processors&) = delete;

    // Those of the process.
    [[nodiscard]] static std::shared_ptr<Processors> Get();
    // Lets the process see the tree below root ("": the running system) as its machine from now on,
    // for tests, and no more than so many processors of it. What was switched off is switched on.
    static void SetRoot(const std::string& root, size_t most = B_MAX_CPU_COUNT);

    const std::string& Root() const { return fRoot; }
    const CpuTopology& Topology() const { return fTopology; }
    // The system's numbers, in the order of the platform's.
    const std::vector<int>& Numbers() const { return fNumbers; }
    // The same, and then those beyond the platform's count that the process may use.
    const std::vector<int>& All() const { return fAll; }

    // See _kset_cpu_state_.
    [[nodiscard]] status_t Switch(int32 cpu, bool on) EXCLUDES(fLock);

    // See ProcessorConfinement. Every beginning has its end.
    void BeginConfinement() EXCLUDES(fLock);
    void EndConfinement() EXCLUDES(fLock);
    // Lets a confined process use so many of the processors beyond the platform's count too.
    void UseBeyond(size_t count) EXCLUDES(fLock);
    // See ProcessorsInUse.
    [[nodiscard]] ProcessorUse Use() EXCLUDES(fLock);

private:
    static void EndLease();
    void TellOfBinding(size_t index, int error) REQUIRES(fLock);
    [[nodiscard]] int SwitchOff(int32 cpu) REQUIRES(fLock);
    [[nodiscard]] int SwitchOn(int32 cpu) REQUIRES(fLock);
    [[nodiscard]] int BindThreads() REQUIRES(fLock);
    void BindThreadsAfterSwitching() REQUIRES(fLock);

    enum class State { kOn, kOffInSystem, kOffForUs };

    const std::string fRoot;
    const CpuTopology fTopology;
    const std::vector<int> fAll;
    const std::vector<int> fNumbers; // the first of them
    Mutex fLock; // of the switching; held until the system has done it
    std::array<State, 8> fStates GUARDED_BY(fLock) {};
    std::unique_ptr<ProcessorLease> fLease GUARDED_BY(fLock); // made when first needed
    ThreadAffinity fAffinity GUARDED_BY(fLock);
    bool fHasToldOfBinding GUARDED_BY(fLock) = false;
    int fConfinements GUARDED_BY(fLock) = 0;
    size_t fBeyond GUARDED_BY(fLock) = 0;
};
} // namespace kernel
