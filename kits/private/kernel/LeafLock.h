// How the kits take their own mutexes. The order of locks: a looper's lock first, then one of
// these, and nothing under it.
#pragma once

#include "Mutex.h"
#include "Thread.h"

#include <optional>

// Holds a mutex for the length of a block. Meanwhile the thread is not stopped by suspend_thread:
// it would stop every other user of the kit with it.
class SCOPED_CAPABILITY LeafLock {
public:
    // For a block that waits on a condition: the thread may be stopped, as most stops find it
    // waiting, where it does not hold the mutex.
    enum Waiting { kWaits };
    // For a mutex that the thread has already taken.
    enum Taking { kTaken };

    explicit LeafLock(Mutex& mutex) ACQUIRE(mutex) : fMutex(mutex)
    {
        fGuard.emplace();
        fMutex.lock();
    }
    LeafLock(Mutex& mutex, Waiting) ACQUIRE(mutex) : fMutex(mutex) { fMutex.lock(); }
    LeafLock(Mutex& mutex, Taking) REQUIRES(mutex) : fMutex(mutex) { fGuard.emplace(); }
    ~LeafLock() RELEASE() { fMutex.unlock(); }
    LeafLock(const LeafLock&) = delete;
    LeafLock& operator=(const LeafLock&) = delete;

private:
    std::optional<kernel::SuspendGuard> fGuard; // ends after the mutex is let go
    Mutex& fMutex;
};
