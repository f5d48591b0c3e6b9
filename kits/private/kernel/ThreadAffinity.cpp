#include "ThreadAffinity.h"

#include "CpuTopology.h"
#include "SystemTree.h"

#include <cerrno>
#include <charconv>
#include <filesystem>
#include <sched.h>
#include <string>

namespace kernel {
namespace {
// Calls function(tid, changed) for every thread again and again until nothing changes any more.
// Twice: a thread may be missed in the listing while others end, but what it has started by then
// is found in the next.
template <typename Function>
void ForEachThreadUntilStable(Function function)
{
    // No call sets the mask of all threads of a process: sched_setaffinity() takes one thread, and
    // a new thread has the mask of its creator. One that is listed after its creator was bound
    // needs nothing, one that was started just before is found in a later round.
    constexpr int kMostRounds = 200; // somebody may start threads without end
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

// Sets the mask also where it reads so already: the system keeps what a thread has asked for. It
// may grant less than that, which is no change the second time. 0 also if the thread has ended.
int Bind(pid_t tid, const ProcessorSet& processors, bool& changed)
{
    ProcessorSet before, after;
    if (!before.ReadFrom(tid))
        return 0;
    if (const int error = processors.ApplyTo(tid); error != 0)
        return error == ESRCH ? 0 : error;
    changed |= after.ReadFrom(tid) && after != before;
    return 0;
}

// After an error the threads that follow stay as they are: what was bound is to be taken back.
int BindAll(const ProcessorSet& processors)
{
    int error = 0;
    ForEachThreadUntilStable([&](pid_t tid, bool& changed) {
        if (error == 0)
            error = Bind(tid, processors, changed);
    });
    return error;
}
} // namespace

// Not sched_getaffinity: it leaves out what is switched off just now, perhaps by another program.
bool ProcessorSet::ReadFrom(pid_t tid)
{
    const std::string status = ReadText("/proc/self/task/" + std::to_string(tid) + "/status");
    const std::string name = "\nCpus_allowed:";
    const size_t start = status.find(name);
    if (start == std::string::npos)
        return false;
    const std::string rest = status.substr(start + name.size());
    *this = ProcessorSet();
    for (const int number : ParseCpuMask(rest.substr(0, rest.find('\n'))))
        Add(number);
    return true;
}

int ProcessorSet::ApplyTo(pid_t tid) const
{
    // The library's own set ends at 1024 processors; the system takes as many as it is given.
    const auto* words = reinterpret_cast<const cpu_set_t*>(fWords.data());
    return sched_setaffinity(tid, sizeof(fWords), words) == 0 ? 0 : errno;
}

void ProcessorSet::Add(const ProcessorSet& others)
{
    for (size_t i = 0; i < fWords.size(); i++)
        fWords[i] |= others.fWords[i];
}

// What a thread may use is remembered with those that are off now: a run takes processors away and
// brings them back, and the thread is to have them again. All threads together make up what a
// thread gets that starts meanwhile, as it has no mask of its own to go back to.
void ThreadAffinity::StartRemembering()
{
    fBeforeTogether = {};
    ForEachThreadUntilStable([this](pid_t tid, bool&) {
        ProcessorSet now;
        if (!now.ReadFrom(tid))
            return;
        fBefore.emplace(tid, now);
        fBeforeTogether.Add(now);
    });
}

int ThreadAffinity::Confine(const ProcessorSet& processors)
{
    // Only the first call remembers: at the second one the masks are those of the first, and what
    // the user had set would be lost.
    const bool isFirst = fBefore.empty();
    if (isFirst)
        StartRemembering();
    const int error = BindAll(processors);
    // All threads or none: one that was left out would run beside the tests on processors that they
    // have to themselves.
    if (error == 0)
        fConfinedTo = processors;
    else if (isFirst)
        Release();
    else
        (void)BindAll(fConfinedTo); // where they were
    return error;
}

void ThreadAffinity::Release()
{
    if (fBefore.empty())
        return;
    ForEachThreadUntilStable([this](pid_t tid, bool& changed) {
        const auto before = fBefore.find(tid);
        // Refused where all that it had are off now. Then the system would have given it more too.
        if (before == fBefore.end() || Bind(tid, before->second, changed) != 0)
            (void)Bind(tid, fBeforeTogether, changed);
    });
    // Empty means not confined: the next Confine() remembers anew, as the user may change masks
    // between runs.
    fBefore.clear();
}
} // namespace kernel
