#include "Processors.h"

#include "KillGuard.h"
#include "LeafLock.h"
#include "OS.h"
#include "SystemTree.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <string_view>
#include <tuple>
#include <unistd.h>
#include <utility>

namespace kernel {
namespace {
bool IsBetter(const CpuProcessor& left, const CpuProcessor& right)
{
    return std::tie(left.sibling, right.capacity, right.maxClock, left.number)
        < std::tie(right.sibling, left.capacity, left.maxClock, right.number);
}

// The system's numbers of the processors that a run uses, at least one and no more than most:
// those that are on and allowed, whole cores before their siblings, fast cores before slow ones,
// else by number. A run gives them up from the last to the second, so the first is processor 0 if
// it is among them, else one that has no switch, else simply the first.
std::vector<int> ChooseProcessors(
    const CpuTopology& topology, const std::function<bool(int)>& isAllowed, size_t most)
{
    std::vector<CpuProcessor> usable;
    std::copy_if(topology.processors.begin(), topology.processors.end(), std::back_inserter(usable),
        [&](const CpuProcessor& processor) {
            return processor.isOnline && isAllowed(processor.number);
        });
    if (usable.empty())
        return { topology.processors.front().number };
    std::sort(usable.begin(), usable.end(), IsBetter);

    auto first = std::find_if(usable.begin(), usable.end(),
        [](const CpuProcessor& processor) { return processor.number == 0; });
    if (first == usable.end())
        first = std::find_if(usable.begin(), usable.end(),
            [](const CpuProcessor& processor) { return !processor.hasSwitch; });
    if (first != usable.end())
        std::rotate(usable.begin(), first, first + 1);

    std::vector<int> numbers;
    for (size_t i = 0; i < usable.size() && i < most; i++)
        numbers.push_back(usable[i].number);
    return numbers;
}

struct Current {
    Mutex lock;
    std::shared_ptr<Processors> processors GUARDED_BY(lock);
};

pid_t gLeaseHolder = 0; // the process that has asked for EndLease at its end

// Lives for ever: the switches' lease ends with the process, not with some static object before.
Current& TheCurrent()
{
    static Current* const sCurrent = new Current;
    return *sCurrent;
}

// The mask of the whole process is that of its first thread; its record shows those that are off
// too, unlike the call.
std::function<bool(int)> AllowedFor(const std::string& root)
{
    constexpr std::string_view kName = "Cpus_allowed_list:";
    const std::string record = root.empty() ? ReadText("/proc/self/status") : "";
    const size_t start = record.find(kName);
    if (start == std::string::npos)
        return [](int) { return true; };
    const size_t list = start + kName.size();
    ProcessorSet mask;
    for (const int number : ParseCpuList(record.substr(list, record.find('\n', list) - list)))
        mask.Add(number);
    return [mask](int number) { return mask.Has(number); };
}

// With those on that runs have taken away. A run begins with the last, so they are the last.
CpuTopology ReadWholeTopology(const std::string& root)
{
    CpuTopology topology = ReadCpuTopology(root);
    int rank = kMaxProcessorNumber;
    for (const RunNote& note : ReadNotes(root)) {
        for (const int number : note.off) {
            for (CpuProcessor& processor : topology.processors) {
                if (processor.number != number || processor.isOnline)
                    continue;
                processor.isOnline = true;
                processor.sibling = rank--;
            }
        }
    }
    return topology;
}

void TellThatUnconfined(int error)
{
    fprintf(
        stderr, "Error binding the program to the processors that are on: %s\n", strerror(error));
}

// At the end of the program no thread may be waited for: none has the right to go on.
bool TryToLock(Mutex& lock) TRY_ACQUIRE(true, lock)
{
    constexpr int kMostTries = 100;
    for (int tries = 0; tries < kMostTries; tries++) {
        if (lock.try_lock())
            return true;
        usleep(10000);
    }
    return false;
}
} // namespace

Processors::Processors(const std::string& root, size_t most)
    : fRoot(root), fTopology(ReadWholeTopology(root)),
      fAll(ChooseProcessors(fTopology, AllowedFor(root), std::numeric_limits<size_t>::max())),
      fNumbers(fAll.begin(), fAll.begin() + static_cast<ptrdiff_t>(std::min(most, fAll.size())))
{
}

std::shared_ptr<Processors> Processors::Get()
{
    Current& current = TheCurrent();
    const LeafLock lock(current.lock);
    if (!current.processors)
        current.processors = std::make_shared<Processors>("");
    return current.processors;
}

void Processors::SetRoot(const std::string& root, size_t most)
{
    Current& current = TheCurrent();
    const LeafLock lock(current.lock);
    if (const auto before = std::exchange(current.processors, nullptr)) {
        for (int32 cpu = 1; cpu < static_cast<int32>(before->Numbers().size()); cpu++)
            (void)before->Switch(cpu, true); // it has told what failed
    }
    current.processors = std::make_shared<Processors>(root, most);
}

// However the program ends in an orderly way, its processors are on then. Not in a child.
void Processors::EndLease()
{
    Current& current = TheCurrent();
    std::shared_ptr<Processors> processors;
    if (gLeaseHolder != getpid() || !TryToLock(current.lock))
        return;
    {
        const LeafLock lock(current.lock, LeafLock::kTaken);
        processors = current.processors;
    }
    if (!processors || !TryToLock(processors->fLock))
        return;
    const LeafLock lock(processors->fLock, LeafLock::kTaken);
    if (processors->fLease)
        processors->fLease->End();
}

void Processors::TellOfBinding(size_t index, int error)
{
    if (fLease->CanSwitch(index)) {
        fprintf(stderr,
            "Processor <%d> cannot be switched off: %s. The program is bound to the others\n",
            fNumbers[index], error == EALREADY ? "another run has done so" : strerror(error));
        return;
    }
    if (!fHasToldOfBinding)
        fprintf(stderr,
            "Processors are not switched off (%s): the program is bound to the others\n",
            strerror(error));
    fHasToldOfBinding = true;
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
        if (fStates[i] != State::kOn)
            continue;
        on.Add(fNumbers[i]);
        count++;
    }
    for (size_t i = 0; i < fBeyond; i++)
        on.Add(fAll[fNumbers.size() + i]);
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
    if (!fLease) {
        fLease = std::make_unique<ProcessorLease>(fRoot, fNumbers);
        if (std::exchange(gLeaseHolder, getpid()) != getpid())
            atexit(EndLease);
    }
    // Before the system does it: a thread that has no processor left may use all of them again.
    fStates[index] = State::kOffForUs;
    const int bindError = BindThreads();
    const int refusal = fLease->Set(index, false);
    if (refusal == 0) {
        fStates[index] = State::kOffInSystem;
        BindThreadsAfterSwitching();
        return 0;
    }
    if (fRoot.empty() && bindError == 0) {
        TellOfBinding(index, refusal);
        return 0;
    }
    fStates[index] = State::kOn;
    (void)BindThreads(); // as they were
    return fRoot.empty() ? bindError : refusal;
}

int Processors::SwitchOn(int32 cpu)
{
    const auto index = static_cast<size_t>(cpu);
    const bool isInSystem = fStates[index] == State::kOffInSystem;
    if (isInSystem) {
        if (const int error = fLease->Set(index, true); error != 0)
            return error;
    }
    fStates[index] = State::kOn;
    if (isInSystem)
        BindThreadsAfterSwitching();
    else if (const int error = BindThreads(); error != 0)
        TellThatUnconfined(error);
    return 0;
}

void Processors::BeginConfinement()
{
    const LeafLock lock(fLock);
    fConfinements++;
    if (const int error = BindThreads(); error != 0)
        TellThatUnconfined(error);
}

void Processors::EndConfinement()
{
    const LeafLock lock(fLock);
    fConfinements--;
    if (const int error = BindThreads(); error != 0)
        TellThatUnconfined(error);
}

void Processors::UseBeyond(size_t count)
{
    const KillGuard guard;
    const LeafLock lock(fLock);
    fBeyond = std::min(count, fAll.size() - fNumbers.size());
    if (const int error = BindThreads(); error != 0)
        TellThatUnconfined(error);
}

ProcessorUse Processors::Use()
{
    const KillGuard guard;
    const LeafLock lock(fLock);
    ProcessorUse use;
    for (size_t i = 0; i < fNumbers.size(); i++) {
        if (fStates[i] == State::kOn)
            use.used.push_back(fNumbers[i]);
        else if (fStates[i] == State::kOffInSystem)
            use.off.push_back(fNumbers[i]);
    }
    for (size_t i = 0; i < fBeyond; i++)
        use.used.push_back(fAll[fNumbers.size() + i]);
    return use;
}

status_t Processors::Switch(int32 cpu, bool on)
{
    if (cpu < 0 || cpu >= static_cast<int32>(fNumbers.size()))
        return B_BAD_VALUE;
    if (cpu == 0)
        return on ? status_t { B_OK } : B_NOT_ALLOWED;
    const LeafLock lock(fLock);
    const auto index = static_cast<size_t>(cpu);
    if (on == (fStates[index] == State::kOn))
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

int32 CountProcessors()
{
    return static_cast<int32>(kernel::Processors::Get()->All().size());
}

status_t UseProcessors(int32 count)
{
    const auto processors = kernel::Processors::Get();
    const auto counted = static_cast<int32>(processors->Numbers().size());
    if (count < 1 || count > static_cast<int32>(processors->All().size()))
        return B_BAD_VALUE;
    status_t error = B_OK;
    const auto change = [&](int32 cpu, bool on) {
        const status_t status = _kset_cpu_state_(cpu, on ? 1 : 0);
        error = error == B_OK ? status : error;
    };
    for (int32 cpu = 1; cpu < std::min(count, counted); cpu++)
        change(cpu, true);
    processors->UseBeyond(static_cast<size_t>(std::max(count - counted, 0)));
    for (int32 cpu = counted - 1; cpu >= count; cpu--)
        change(cpu, false);
    return error;
}

ProcessorUse ProcessorsInUse()
{
    return kernel::Processors::Get()->Use();
}

ProcessorConfinement::ProcessorConfinement() : fProcessors(kernel::Processors::Get())
{
    fProcessors->BeginConfinement();
}

ProcessorConfinement::~ProcessorConfinement()
{
    fProcessors->EndConfinement();
}
