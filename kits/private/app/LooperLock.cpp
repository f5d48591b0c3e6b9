#include "LooperLock.h"

#include "Check.h"
#include "LeafLock.h"

// A waiter's place in the queue. It ends with the mutex held; what a thread was given but could not
// take, because it was killed or timed out that moment, goes on to the next.
class LooperLock::Place {
public:
    Place(LooperLock& lock, Waiter& waiter) NO_THREAD_SAFETY_ANALYSIS : fLock(lock), fWaiter(waiter)
    {
        fLock.fWaiters.push_back(&fWaiter);
    }
    ~Place() NO_THREAD_SAFETY_ANALYSIS
    {
        if (!fWaiter.granted)
            fLock.fWaiters.remove(&fWaiter);
        else if (!fWaiter.taken && !fLock.fDead)
            fLock.HandOver();
    }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

private:
    LooperLock& fLock;
    Waiter& fWaiter;
};

LooperLock::LooperLock() : fHolder(find_thread(nullptr)) { }

status_t LooperLock::Lock(bigtime_t timeout)
{
    const thread_id self = find_thread(nullptr);
    {
        const LeafLock lock(fMutex);
        const status_t status = Take(self);
        if (status != B_WOULD_BLOCK || timeout <= 0)
            return status;
    }
    // The thread cannot be stopped while it only takes the lock. A wait can be long, and
    // suspend_thread must not wait as long: so it is begun anew, with a lock under which the thread
    // may be stopped.
    const LeafLock lock(fMutex, LeafLock::kWaits);
    status_t status = Take(self);
    if (status == B_WOULD_BLOCK)
        status = Wait(self, timeout);
    return status;
}

status_t LooperLock::Take(thread_id thread)
{
    if (fDead)
        return B_BAD_VALUE;
    if (fHolder != B_ERROR && fHolder != thread)
        return B_WOULD_BLOCK;
    // The holder is not killed: nobody else could unlock a looper for it. Each guard is made and
    // ended by the thread that it guards, as it is counted there.
    if (fHolder == B_ERROR) {
        fHolder = thread;
        fGuard.emplace();
    }
    ++fCount;
    return B_OK;
}

status_t LooperLock::Wait(thread_id thread, bigtime_t timeout)
{
    const Deadline deadline(timeout);
    Waiter waiter { thread, false, false, {} };
    const Place place(*this, waiter);
    bool inTime = true;
    // A lock that was granted in the last moment counts, whatever the clock says.
    while (!waiter.granted && !fDead) {
        if (!inTime)
            return B_TIMED_OUT;
        inTime = deadline.Wait(waiter.changed, fMutex);
    }
    if (fDead)
        return B_BAD_VALUE;
    waiter.taken = true;
    // Not in HandOver(): that runs in the thread which lets go.
    fGuard.emplace();
    return B_OK;
}

void LooperLock::Unlock()
{
    const thread_id self = find_thread(nullptr);
    const LeafLock lock(fMutex);
    if (fDead)
        return;
    TARVEX_CHECK(fHolder == self) << "thread " << self << ", held by " << fHolder;
    if (fHolder == self)
        Step();
}

void LooperLock::UnlockAll()
{
    while (IsHeld())
        Unlock();
}

void LooperLock::Release()
{
    const LeafLock lock(fMutex);
    if (fByMaker)
        Step();
}

void LooperLock::Step()
{
    if (--fCount > 0)
        return;
    fByMaker = false;
    fGuard.reset();
    HandOver();
}

void LooperLock::HandOver()
{
    // Given to the first who waits, not only freed: a busy looper that locks again at once for its
    // next message would be faster than anybody who has to wake up first.
    fHolder = B_ERROR;
    fCount = 0;
    if (fWaiters.empty())
        return;
    Waiter& next = *fWaiters.front();
    fWaiters.pop_front();
    fHolder = next.thread;
    fCount = 1;
    next.granted = true;
    next.changed.notify_one();
}

void LooperLock::Claim()
{
    const thread_id self = find_thread(nullptr);
    // The looper is being deleted, and must not be left half so.
    const KillGuard guard;
    const LeafLock lock(fMutex, LeafLock::kWaits);
    if (fByMaker)
        fHolder = self;
    else if (Take(self) == B_WOULD_BLOCK)
        Wait(self, B_INFINITE_TIMEOUT);
}

void LooperLock::Die()
{
    const LeafLock lock(fMutex);
    fDead = true;
    fHolder = B_ERROR;
    fCount = 0;
    fGuard.reset();
    // They take themselves out of the list, each at the end of its wait.
    for (Waiter* waiter : fWaiters)
        waiter->changed.notify_one();
}

bool LooperLock::IsHeld()
{
    return Holder() == find_thread(nullptr);
}

thread_id LooperLock::Holder()
{
    const LeafLock lock(fMutex);
    return fHolder;
}

int32 LooperLock::Count()
{
    const LeafLock lock(fMutex);
    return fCount;
}
