// The threads as the kit knows them, and the way they are stopped and let go again.
#pragma once

#include "Mutex.h"
#include "OS.h"
#include "SupportDefs.h"

#include <atomic>
#include <deque>
#include <map>
#include <memory>
#include <pthread.h>
#include <string>
#include <string_view>

namespace kernel {
// Waiting on a word of memory. Unlike a condition variable it holds nothing inside, so a thread may
// be stopped or interrupted in it at any instruction, and both calls may be made in a signal
// handler.
//
// Sleeps while word is value, until a wake-up, a signal or the deadline (microseconds of
// system_time); negative: no deadline. May return early at any time: callers look again.
void FutexWait(const std::atomic<uint32>& word, uint32 value, bigtime_t deadline = -1);

// Wakes every thread that waits on word.
void FutexWake(const std::atomic<uint32>& word);

// Fields without a remark are written under the ThreadTable's lock only.
struct Thread {
    Thread(thread_id number, const char* threadName, int32 threadPriority);

    // The caller's record, entered in the table now if the kit does not know the thread yet.
    static Thread* Current();

    // Creates the system's thread, which waits for Continue. Returns B_OK, B_NO_MORE_THREADS or
    // B_NO_MEMORY.
    [[nodiscard]] status_t Create(thread_func threadFunction, void* threadData);
    // Makes the calling thread this one.
    void Adopt();
    // Asks the thread to stop; it is `stopped` a little later.
    void Stop();
    void Continue();
    // What the thread does then, also in a signal handler.
    void WaitWhileStopped();
    // Asks a thread that has not ended to end at its next kill point, and lets it run on so that it
    // gets there.
    void RequestKill();
    // Hands name and priority on to the system; best effort, only for a created thread.
    void ApplyName() const;
    void ApplyPriority() const;

    const thread_id id;
    std::string name; // at most 31 bytes
    int32 priority;
    pid_t tid = 0; // the system's number
    pthread_t handle {};
    status_t value = B_INTERRUPTED; // what it has if it never returns one; written by itself

    std::atomic<bool> ended { false };
    std::atomic<bool> killRequest { false };
    std::atomic<bool> asleep { false }; // written by itself
    std::atomic<uint32> mustStop { 1 }; // also before it is resumed for the first time
    std::atomic<bool> stopped { false }; // in answer; written by itself
    std::atomic<uint32> wakeUps { 0 }; // ends a snooze early

private:
    static void* Enter(void* self);

    thread_func fFunction = nullptr;
    void* fData = nullptr;
    std::atomic<uint32> fIsReady { 0 };
};

// The nice value that stands for a priority, relative to the program's own: 0 for
// B_NORMAL_PRIORITY, -19 to 19, never rising with the priority.
[[nodiscard]] int NiceForPriority(int32 priority);

// While it lives, the calling thread is not stopped by suspend_thread: for locks that the thread
// needs which is to resume it. A request made meanwhile takes effect at the end of the last one.
class SuspendGuard {
public:
    SuspendGuard();
    ~SuspendGuard();
    SuspendGuard(const SuspendGuard&) = delete;
    SuspendGuard& operator=(const SuspendGuard&) = delete;
};

// Goes up, and wakes who waits on it, whenever a thread ends, stops or is killed.
extern std::atomic<uint32> gThreadEvents;
void TellThreadEvent();

// All threads of the process that the kit knows, and the latest that have ended.
class ThreadTable {
public:
    // The lock of all records, never held while waiting for a thread. Its holder is not stopped.
    class SCOPED_CAPABILITY Lock {
    public:
        explicit Lock(ThreadTable& table) ACQUIRE(table.fLock) : fTable(table)
        {
            fTable.fLock.lock();
        }
        ~Lock() RELEASE() { fTable.fLock.unlock(); }
        Lock(const Lock&) = delete;
        Lock& operator=(const Lock&) = delete;

    private:
        SuspendGuard fSuspendGuard; // first released, then stopped
        ThreadTable& fTable;
    };

    // Lives for ever: threads may outlast every static object.
    static ThreadTable& Get();

    using Threads = std::map<thread_id, std::shared_ptr<Thread>>;
    using Entry = Threads::node_type;

    // A record with a new id, not in the table yet. Throws std::bad_alloc; Insert never does.
    [[nodiscard]] Entry NewEntry(const char* name, int32 priority);
    void Insert(Entry&& entry);

    // The calls from here on need the lock. Null if there is none or it has ended.
    [[nodiscard]] std::shared_ptr<Thread> Find(thread_id id) REQUIRES(fLock);
    [[nodiscard]] std::shared_ptr<Thread> Find(std::string_view name) REQUIRES(fLock);
    // Gives away the record of a thread that has ended; null if it is not kept any more.
    [[nodiscard]] std::shared_ptr<Thread> TakeEnded(thread_id id) REQUIRES(fLock);

    // Moves a thread to those that have ended: its last act. It does not free its record itself.
    void End(Thread& thread);

private:
    mutable Mutex fLock;
    thread_id fNextId GUARDED_BY(fLock) = 1;
    Threads fThreads GUARDED_BY(fLock);
    std::deque<std::shared_ptr<Thread>> fEnded GUARDED_BY(fLock); // and not waited for
};
} // namespace kernel
