#include "kits/kernel/ThreadAffinity.h"

#include <cerrno>
#include <charconv>
#include <filesystem>
#include <sched.h>

namespace kernel {
namespace {
// Calls function(tid, changed) for every thread again and again until nothing changes any more.
// Twice: a thread may be missed in the listing while others end, but what it has started by then
// is found in the next.
template <typename Function>
void ForEachThreadUntilStable(Function function)
{
    constexpr int kMostRounds = 200;
    int unchangedRounds = 0;
    for (int round = 0; round < kMostRounds && unchangedRounds < 2; round++) {
        bool changed = false;
        std::error_code error;
        for (std::filesystem::directory_iterator entry("/proc/self/task", error), end; entry != end;
             entry.increment(error)) {
            const std::string name = entry->path().filename();
            pid_t tid = 0;
            std::from_chars(name.data(), name.data() + name.size(), tid);
            function(tid, changed);
        }
        unchangedRounds = changed ? 0 : unchangedRounds + 1;
    }
}
} // namespace

bool ProcessorSet::ReadFrom(pid_t tid)
{
    *this = ProcessorSet();
    return sched_getaffinity(tid, sizeof(fWords), reinterpret_cast<cpu_set_t*>(fWords.data())) == 0;
}

int ProcessorSet::ApplyTo(pid_t tid) const
{
    const auto* words = reinterpret_cast<const cpu_set_t*>(fWords.data());
    return sched_setaffinity(tid, sizeof(fWords), words) == 0 ? 0 : errno;
}

void ProcessorSet::Remove(const ProcessorSet& others)
{
    for (size_t i = 0; i < fWords.size(); i++)
        fWords[i] &= ~others.fWords[i];
}

void ThreadAffinity::StartRemembering()
{
    if (!fTaken.IsEmpty())
        return;
    fBefore.clear();
    ForEachThreadUntilStable([this](pid_t tid, bool&) {
        ProcessorSet now;
        if (now.ReadFrom(tid))
            fBefore.emplace(tid, now);
    });
}

void ThreadAffinity::Remember(int number)
{
    StartRemembering();
    fTaken.Add(number);
}

int ThreadAffinity::TakeFrom(pid_t tid, const ProcessorSet& instead, bool& changed) const
{
    ProcessorSet now;
    if (!now.ReadFrom(tid))
        return 0;
    ProcessorSet left = now;
    left.Remove(fTaken);
    if (left == now)
        return 0;
    changed = true;
    const int error = (left.IsEmpty() ? instead : left).ApplyTo(tid);
    return error == ESRCH ? 0 : error;
}

int ThreadAffinity::TakeAway(int number, const ProcessorSet& instead)
{
    Remember(number);
    int error = 0;
    ForEachThreadUntilStable([&](pid_t tid, bool& changed) {
        if (error == 0)
            error = TakeFrom(tid, instead, changed);
    });
    if (error != 0)
        GiveBack(number);
    return error;
}

void ThreadAffinity::GiveBackTo(pid_t tid, int number, bool& changed) const
{
    ProcessorSet now;
    if (!now.ReadFrom(tid))
        return;
    ProcessorSet wanted = now;
    const auto before = fBefore.find(tid);
    if (before == fBefore.end() || before->second.Has(number))
        wanted.Add(number);
    if (before != fBefore.end()) {
        ProcessorSet restOfBefore = before->second;
        restOfBefore.Remove(fTaken);
        ProcessorSet whileTaken = restOfBefore;
        whileTaken.Remove(number);
        if (whileTaken.IsEmpty() && !restOfBefore.IsEmpty())
            wanted = restOfBefore; // it ran elsewhere, having nothing left of its own
    }
    if (wanted == now || wanted.ApplyTo(tid) != 0)
        return;
    ProcessorSet after;
    changed |= after.ReadFrom(tid) && after != now; // the system may know better
}

void ThreadAffinity::GiveBack(int number)
{
    fTaken.Remove(number);
    ForEachThreadUntilStable([&](pid_t tid, bool& changed) { GiveBackTo(tid, number, changed); });
}
} // namespace kernel
