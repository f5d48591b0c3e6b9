#include "kits/kernel/Processors.h"

#include "kits/kernel/KillGuard.h"
#include "kits/kernel/ProcessorChoice.h"
#include "OS.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <functional>
#include <unistd.h>
#include <utility>

namespace kernel {
namespace {
struct Current {
    Mutex lock;
    std::shared_ptr<Processors> processors GUARDED_BY(lock);
};

// Lives for ever: the switches' lease ends with the process, not with some static object before.
Current& TheCurrent()
{
    static Current* const sCurrent = new Current;
    return *sCurrent;
}

// The mask of the whole process is that of its first thread.
std::function<bool(int)> AllowedFor(const std::string& root)
{
    ProcessorSet mask;
    if (!root.empty() || !mask.ReadFrom(getpid()))
        return [](int) { return true; };
    return [mask](int number) { return mask.Has(number); };
}

void TellThatUnconfined(int error)
{
    fprintf(
        stderr, "Error binding the program to the processors that are on: %s\n", strerror(error));
}
} // namespace

Processors::Processors(const std::string& root, size_t most)
    : fRoot(root), fTopology(ReadCpuTopology(root)),
      fNumbers(ChooseProcessors(fTopology, AllowedFor(root), most))
{
}

std::shared_ptr<Processors> Processors::Get()
{
    const KillGuard guard;
    Current& current = TheCurrent();
    const MutexLock lock(current.lock);
    if (!current.processors)
        current.processors = std::make_shared<Processors>("");
    return current.processors;
}

void Processors::SetRoot(const std::string& root, size_t most)
{
    const KillGuard guard;
    Current& current = TheCurrent();
    const MutexLock lock(current.lock);
    if (const auto before = std::exchange(current.processors, nullptr)) {
        for (int32 cpu = 1; cpu < static_cast<int32>(before->Numbers().size()); cpu++)
            (void)before->Switch(cpu, true); // it has told what failed
    }
    current.processors = std::make_shared<Processors>(root, most);
}

// Gives every thread what it may use as things stand: all that it had, or exactly the processors
// that are on of those that count.
int Processors::BindThreads()
{
    if (!fRoot.empty()) // the numbers are another machine's
        return 0;
    ProcessorSet on;
    size_t count = 0;
    for (size_t i = 0; i < fNumbers.size(); i++) {
        if (fStates[i] != State::On)
            continue;
        on.Add(fNumbers[i]);
        count++;
    }
    if (fConfinements > 0 || count < fNumbers.size())
        return fAffinity.Confine(on);
    fAffinity.Release();
    return 0;
}

// In a container the system widens the threads' masks when a processor goes or comes: at once, or
// (kernels before 6.10) a moment later.
void Processors::BindThreadsAfterSwitching()
{
    constexpr int kLooks = 10;
    constexpr useconds_t kPauseMicros = 5000;
    int error = BindThreads();
    for (int look = 0; fRoot.empty() && error == 0 && look < kLooks; look++) {
        usleep(kPauseMicros);
        error = BindThreads();
    }
    if (error != 0)
        TellThatUnconfined(error);
}

int Processors::SwitchOff(int32 cpu)
{
    const auto index = static_cast<size_t>(cpu);
    if (!fLease)
        fLease = std::make_unique<ProcessorLease>(fRoot, fNumbers);
    int error = EACCES;
    // Before the system does it: a thread that has no processor left may use all of them again.
    fStates[index] = State::OffForUs;
    const int bindError = BindThreads();
    if (fLease->CanSwitch(cpu) && (error = fLease->Set(cpu, false)) == 0) {
        fStates[index] = State::OffInSystem;
        BindThreadsAfterSwitching();
        return 0;
    }
    if (fRoot.empty() && bindError == 0)
        return 0;
    fStates[index] = State::On;
    (void)BindThreads(); // as they were
    return fRoot.empty() ? bindError : error;
}

int Processors::SwitchOn(int32 cpu)
{
    const auto index = static_cast<size_t>(cpu);
    const bool isInSystem = fStates[index] == State::OffInSystem;
    if (isInSystem) {
        if (const int error = fLease->Set(cpu, true); error != 0)
            return error;
    }
    fStates[index] = State::On;
    if (isInSystem)
        BindThreadsAfterSwitching();
    else if (const int error = BindThreads(); error != 0)
        TellThatUnconfined(error);
    return 0;
}

void Processors::BeginConfinement()
{
    const KillGuard guard;
    const MutexLock lock(fLock);
    fConfinements++;
    if (const int error = BindThreads(); error != 0)
        TellThatUnconfined(error);
}

void Processors::EndConfinement()
{
    const KillGuard guard;
    const MutexLock lock(fLock);
    fConfinements--;
    if (const int error = BindThreads(); error != 0)
        TellThatUnconfined(error);
}

status_t Processors::Switch(int32 cpu, bool on)
{
    if (cpu < 0 || cpu >= static_cast<int32>(fNumbers.size()))
        return B_BAD_VALUE;
    if (cpu == 0)
        return on ? status_t { B_OK } : B_NOT_ALLOWED;
    const KillGuard guard;
    const MutexLock lock(fLock);
    const auto index = static_cast<size_t>(cpu);
    if (on == (fStates[index] == State::On))
        return B_OK;
    const int error = on ? SwitchOn(cpu) : SwitchOff(cpu);
    if (error == 0)
        return B_OK;
    fprintf(stderr, "Error switching processor <%d> %s: %s\n", fNumbers[index], on ? "on" : "off",
        strerror(error));
    return B_ERROR;
}
} // namespace kernel

status_t _kset_cpu_state_(int32 cpu, int32 state)
{
    CheckKilled();
    if (state != 0 && state != 1)
        return B_BAD_VALUE;
    return kernel::Processors::Get()->Switch(cpu, state == 1);
}

ProcessorConfinement::ProcessorConfinement() : fProcessors(kernel::Processors::Get())
{
    fProcessors->BeginConfinement();
}

ProcessorConfinement::~ProcessorConfinement()
{
    fProcessors->EndConfinement();
}
