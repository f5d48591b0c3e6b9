#include "KillGuard.h"
#include "OS.h"
#include "TaskStat.h"
#include "Thread.h"

#include <cstring>
#include <ctime>
#include <new>
#include <unistd.h>

using kernel::Thread;
using kernel::ThreadTable;

namespace {
// system_time() without being a kill point.
bigtime_t Now()
{
    timespec now {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return bigtime_t { now.tv_sec } * 1000000 + now.tv_nsec / 1000;
}

// A request to stop is made again after this time: ThreadSanitizer may put it off for as long as
// the thread is blocked, if it came just before that.
constexpr bigtime_t kStopAgainMicros = 50000;

// A kill point.
void WaitForEnd(const Thread& target)
{
    for (;;) {
        const uint32 events = kernel::gThreadEvents.load();
        if (target.ended.load())
            return;
        CheckKilled();
        kernel::FutexWait(kernel::gThreadEvents, events);
    }
}

status_t WaitForStop(Thread& thread)
{
    for (;;) {
        const uint32 events = kernel::gThreadEvents.load();
        if (thread.ended.load())
            return B_BAD_THREAD_ID;
        if (thread.stopped.load() || thread.mustStop.load() == 0)
            return B_OK;
        const bigtime_t patience = Now() + kStopAgainMicros;
        kernel::FutexWait(kernel::gThreadEvents, events, patience);
        if (Now() < patience)
            continue;
        const ThreadTable::Lock lock(ThreadTable::Get());
        if (!thread.ended.load() && thread.mustStop.load() == 1)
            thread.Stop();
    }
}

thread_state StateOf(const Thread& thread, char taskState)
{
    if (thread.mustStop.load() == 1)
        return B_THREAD_SUSPENDED;
    if (thread.asleep.load())
        return B_THREAD_ASLEEP;
    return taskState == 'R' ? B_THREAD_RUNNING : B_THREAD_WAITING;
}
} // namespace

thread_id spawn_thread(thread_func function, const char* name, int32 priority, void* data)
{
    CheckKilled();
    if (!function)
        return B_BAD_VALUE;
    try {
        ThreadTable::Entry entry = ThreadTable::Get().NewEntry(name ? name : "", priority);
        const std::shared_ptr<Thread> thread = entry.mapped();
        const status_t status = thread->Create(function, data);
        if (status != B_OK)
            return status;
        ThreadTable::Get().Insert(std::move(entry));
        return thread->id;
    } catch (const std::bad_alloc&) { // nothing is allocated once the thread is there
        return B_NO_MEMORY;
    }
}

status_t resume_thread(thread_id id)
{
    CheckKilled();
    ThreadTable& table = ThreadTable::Get();
    const ThreadTable::Lock lock(table);
    const auto thread = table.Find(id);
    if (!thread)
        return B_BAD_THREAD_ID;
    if (thread->mustStop.load() == 0)
        return B_BAD_THREAD_STATE;
    thread->Continue();
    kernel::TellThreadEvent(); // to who may still wait for it to stop
    return B_OK;
}

status_t suspend_thread(thread_id id)
{
    CheckKilled();
    ThreadTable& table = ThreadTable::Get();
    std::shared_ptr<Thread> thread;
    {
        const ThreadTable::Lock lock(table);
        thread = table.Find(id);
        if (!thread)
            return B_BAD_THREAD_ID;
        // Stopped it would never get to the kill point where it ends.
        if (thread->killRequest.load())
            return B_BAD_THREAD_STATE;
        if (thread->mustStop.load() == 1)
            return B_OK;
        thread->Stop();
    }
    return WaitForStop(*thread);
}

status_t kill_thread(thread_id id)
{
    CheckKilled();
    ThreadTable& table = ThreadTable::Get();
    std::shared_ptr<Thread> thread;
    {
        const ThreadTable::Lock lock(table);
        thread = table.Find(id);
        if (!thread)
            return B_BAD_THREAD_ID;
        thread->RequestKill();
    }
    // It cannot wait for its own end. Under a KillGuard it goes on here and ends at its next kill
    // point.
    if (thread.get() == Thread::Current())
        CheckKilled();
    else
        WaitForEnd(*thread);
    return B_OK;
}

status_t wait_for_thread(thread_id id, status_t* value)
{
    CheckKilled();
    ThreadTable& table = ThreadTable::Get();
    if (id == Thread::Current()->id)
        return B_NOT_ALLOWED;
    std::shared_ptr<Thread> thread;
    {
        const ThreadTable::Lock lock(table);
        thread = table.Find(id);
        if (thread)
            // As on the platform a thread that was not resumed yet is let run: nobody else might do
            // it, and this call would not return.
            thread->Continue();
        else if (!(thread = table.TakeEnded(id)))
            return B_BAD_THREAD_ID;
    }
    WaitForEnd(*thread);
    const ThreadTable::Lock lock(table);
    (void)table.TakeEnded(id); // unless another who waits was faster
    if (value)
        *value = thread->value;
    return B_OK;
}

status_t set_thread_priority(thread_id id, int32 priority)
{
    CheckKilled();
    ThreadTable& table = ThreadTable::Get();
    const ThreadTable::Lock lock(table);
    const auto thread = table.Find(id);
    if (!thread)
        return B_BAD_THREAD_ID;
    const int32 before = thread->priority;
    thread->priority = priority;
    thread->ApplyPriority();
    return before;
}

status_t get_thread_info(thread_id id, thread_info* info)
{
    CheckKilled();
    ThreadTable& table = ThreadTable::Get();
    if (!info)
        return B_BAD_VALUE;
    std::shared_ptr<Thread> thread;
    {
        const ThreadTable::Lock lock(table);
        thread = table.Find(id);
        if (!thread)
            return B_BAD_THREAD_ID;
        *info = {};
        info->thread = id;
        info->team = static_cast<team_id>(getpid());
        thread->name.copy(info->name, B_OS_NAME_LENGTH - 1);
        info->priority = thread->priority;
    }
    // Without the lock: to read a file takes long, and no thread could start or end meanwhile. One
    // that ends now is told by its record.
    kernel::TaskStat stat;
    if (!kernel::ReadTaskStat(thread->tid, stat) && thread->ended.load())
        return B_BAD_THREAD_ID;
    info->state = StateOf(*thread, stat.state);
    info->user_time = stat.userTime;
    info->kernel_time = stat.kernelTime;
    return B_OK;
}

thread_id find_thread(const char* name)
{
    CheckKilled();
    ThreadTable& table = ThreadTable::Get();
    if (!name)
        return Thread::Current()->id;
    const ThreadTable::Lock lock(table);
    const auto thread = table.Find(std::string_view(name));
    return thread ? thread->id : static_cast<thread_id>(B_NAME_NOT_FOUND);
}

status_t rename_thread(thread_id id, const char* name)
{
    CheckKilled();
    ThreadTable& table = ThreadTable::Get();
    if (!name)
        return B_BAD_VALUE;
    const ThreadTable::Lock lock(table);
    const auto thread = table.Find(id);
    if (!thread)
        return B_BAD_THREAD_ID;
    thread->name.assign(name, strnlen(name, B_OS_NAME_LENGTH - 1));
    thread->ApplyName();
    return B_OK;
}

void exit_thread(status_t value)
{
    Thread::Current()->value = value;
    // Not by CanEndHere(): who calls this in a destructor has asked for what follows.
    pthread_exit(nullptr);
}

bigtime_t system_time()
{
    CheckKilled();
    return Now();
}

status_t snooze(bigtime_t microseconds)
{
    CheckKilled();
    if (microseconds <= 0)
        return B_OK;
    kernel::Thread& self = *kernel::Thread::Current();
    const bigtime_t now = Now();
    // Forever where the sum would overflow.
    const bigtime_t deadline =
        microseconds < B_INFINITE_TIMEOUT - now ? now + microseconds : bigtime_t { -1 };
    self.asleep.store(true);
    // A wait ends early when the thread is stopped or killed, and for no reason: only the clock
    // ends the sleep.
    while (deadline < 0 || Now() < deadline) {
        const uint32 wakeUps = self.wakeUps.load();
        CheckKilled();
        kernel::FutexWait(self.wakeUps, wakeUps, deadline);
    }
    self.asleep.store(false);
    return B_OK;
}
