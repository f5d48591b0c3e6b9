// How the app kit takes its own mutexes. The order of locks in the kit: a looper's lock first, then
// one of these, and nothing under it.
#pragma once

#include "kits/kernel/Thread.h"
#include "Mutex.h"

// Holds a mutex for the length of a block that waits for nothing. Meanwhile the thread is not
// stopped by suspend_thread: it would stop every other user of the kit with it.
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
