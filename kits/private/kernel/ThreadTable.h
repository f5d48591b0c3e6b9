// All threads of the process that the kit knows, and the latest that have ended.
#pragma once

#include "Mutex.h"
#include "Thread.h"

#include <deque>
#include <map>
#include <memory>
#include <string_view>

namespace kernel {
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
