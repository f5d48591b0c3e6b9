// How the kits take their own mutexes. The order of locks: a looper's lock first, then one of
// these, and nothing under it.
#pragma once

#include <optional>

#include "KillGuard.h"
#include "Mutex.h"
#include "Thread.h"
#include "UnwindCheck.h"

// Holds a mutex for the length of a block that waits for nothing. Meanwhile the thread is not
// stopped by suspend_thread: it would stop every other user of the kits with it.
class SCOPED_CAPABILITY LeafLock {
public:
    explicit LeafLock(Mutex& mutex) ACQUIRE(mutex) : fMutex(mutex) { fMutex.lock(); }
    ~LeafLock() RELEASE() { fMutex.unlock(); }
    LeafLock(const LeafLock&) = delete;
    LeafLock& operator=(const LeafLock&) = delete;

private:
    const kernel::SuspendGuard fGuard; // ends after the mutex is let go
    Mutex& fMutex;
};

// For a wait on a condition, which is a kill point: inside a destructor it must not be one.
class WaitGuard {
public:
    WaitGuard()
    {
        if (!kernel::StackCanBeUnwound())
            fGuard.emplace();
    }

private:
    std::optional<KillGuard> fGuard;
};
