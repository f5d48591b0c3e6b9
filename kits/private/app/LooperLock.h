// Locks and waits of threads that share loopers.
#pragma once

#include "KillGuard.h"
#include "Mutex.h"
#include "OS.h"

#include <chrono>
#include <list>
#include <optional>

// The end of a wait that may be woken several times before it is over.
class Deadline {
public:
    // Timeout in microseconds from now; B_INFINITE_TIMEOUT: never.
    explicit Deadline(bigtime_t timeout)
        : fEndless(timeout > kLongest),
          fEnd(std::chrono::steady_clock::now() + std::chrono::microseconds(fEndless ? 0 : timeout))
    {
    }

    // Waits to be woken, perhaps without cause; false once the deadline has passed. A kill point.
    bool Wait(Condition& condition, Mutex& mutex) const REQUIRES(mutex)
    {
        const kernel::KillableWait killable;
        if (!fEndless)
            return condition.wait_until(mutex, fEnd) == std::cv_status::no_timeout;
        condition.wait(mutex);
        return true;
    }

private:
    static constexpr bigtime_t kLongest = 1'000'000'000'000'000; // thirty years; fits the clock

    bool fEndless;
    std::chrono::steady_clock::time_point fEnd;
};

// The lock of a looper, or a program's BLocker. It lives as long as somebody waits for it, though
// the looper may have died; the holder may lock again; and it goes from thread to thread in the
// order of asking, so that a busy looper lets others in between two messages. Its own mutex is a
// leaf.
//
// held by its maker --Release()--> free <--Lock()/Unlock()--> held --Claim(), Die()--> dead
class LooperLock {
public:
    LooperLock(); // held once by the calling thread

    // B_OK, B_WOULD_BLOCK (timeout 0), B_TIMED_OUT, B_BAD_VALUE once it is dead, also for those
    // that wait. The wait is a kill point; the holder is not killed.
    status_t Lock(bigtime_t timeout) EXCLUDES(fMutex);
    void Unlock() EXCLUDES(fMutex); // nothing if it is dead
    void UnlockAll() EXCLUDES(fMutex);
    // Gives back the maker's lock, whichever thread that was.
    void Release() EXCLUDES(fMutex);
    // Makes the caller the holder, whichever thread was the maker, and waits for any other holder.
    void Claim() EXCLUDES(fMutex);
    void Die() EXCLUDES(fMutex); // ends it for good; only by the holder

    bool IsHeld() EXCLUDES(fMutex); // by the calling thread
    thread_id Holder() EXCLUDES(fMutex); // B_ERROR: nobody
    int32 Count() EXCLUDES(fMutex); // how often the holder has locked it

private:
    struct Waiter {
        thread_id thread;
        bool granted = false;
        bool taken = false;
        Condition changed;
    };
    class Place;

    status_t Take(thread_id thread) REQUIRES(fMutex); // B_WOULD_BLOCK: another one holds it
    status_t Wait(thread_id thread, bigtime_t timeout) REQUIRES(fMutex);
    void Step() REQUIRES(fMutex);
    void HandOver() REQUIRES(fMutex);

    Mutex fMutex;
    thread_id fHolder GUARDED_BY(fMutex);
    int32 fCount GUARDED_BY(fMutex) = 1;
    // A maker is not guarded: the looper may be deleted by another thread before it ever runs.
    bool fByMaker GUARDED_BY(fMutex) = true;
    bool fDead GUARDED_BY(fMutex) = false;
    std::optional<KillGuard> fGuard GUARDED_BY(fMutex); // the holder's, made and ended by it
    std::list<Waiter*> fWaiters GUARDED_BY(fMutex);
};
