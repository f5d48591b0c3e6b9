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
} // namespace

Processors::Processors(const std::string& root)
    : fRoot(root), fTopology(ReadCpuTopology(root)),
      fNumbers(ChooseProcessors(fTopology, AllowedFor(root)))
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

void Processors::SetRoot(const std::string& root)
{
    const KillGuard guard;
    Current& current = TheCurrent();
    const MutexLock lock(current.lock);
    if (const auto before = std::exchange(current.processors, nullptr)) {
        for (int32 cpu = 1; cpu < static_cast<int32>(before->Numbers().size()); cpu++)
            (void)before->Switch(cpu, true); // it has told what failed
    }
    current.processors = std::make_shared<Processors>(root);
}

ProcessorSet Processors::OthersThan(int32 cpu) const
{
    ProcessorSet others;
    for (size_t i = 0; i < fNumbers.size(); i++) {
        if (fStates[i] == State::On && i != static_cast<size_t>(cpu))
            others.Add(fNumbers[i]);
    }
    return others;
}

int Processors::SwitchOff(int32 cpu)
{
    const auto index = static_cast<size_t>(cpu);
    if (!fLease)
        fLease = std::make_unique<ProcessorLease>(fRoot, fNumbers);
    int error = EACCES;
    if (fRoot.empty())
        fAffinity.Remember(fNumbers[index]);
    if (fLease->CanSwitch(cpu) && (error = fLease->Set(cpu, false)) == 0) {
        fStates[index] = State::OffInSystem;
        return 0;
    }
    if (!fRoot.empty()) // the numbers are another machine's
        return error;
    error = fAffinity.TakeAway(fNumbers[index], OthersThan(cpu));
    if (error == 0)
        fStates[index] = State::OffForUs;
    return error;
}

int Processors::SwitchOn(int32 cpu)
{
    const auto index = static_cast<size_t>(cpu);
    if (fStates[index] == State::OffInSystem) {
        if (const int error = fLease->Set(cpu, true); error != 0)
            return error;
    }
    if (fRoot.empty())
        fAffinity.GiveBack(fNumbers[index]);
    fStates[index] = State::On;
    return 0;
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
