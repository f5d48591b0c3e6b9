// What the kits do so that kill_thread is safe. A thread is killed only at a kill point: a kit call
// that says CheckKilled(), or the wait under a KillableWait. Its stack is then unwound, so what
// objects on it hold is given back. Calls of the C library are no kill points.
//
// A KillGuard is needed around kill points where a lock is held that is not an object on the stack
// or where data is half changed. Destructors and noexcept functions need none: being unwound
// through those would end the program, so a thread is not killed inside them.
#pragma once

#include <atomic>

// As long as it lives the thread is not killed. Guards nest. The end of the last one is not a kill
// point itself.
class KillGuard {
public:
    KillGuard();
    ~KillGuard();
    KillGuard(const KillGuard&) = delete;
    KillGuard& operator=(const KillGuard&) = delete;
};

namespace kernel {
// Points to what is set while somebody wants this thread killed; null in a thread that the kit does
// not know.
extern constinit thread_local const std::atomic<bool>* tKillRequest;

// False under a KillGuard and while a destructor or noexcept function is under way. Takes some
// microseconds.
[[nodiscard]] bool CanEndHere();

// Ends the calling thread, its stack unwound, if CanEndHere().
void EndIfPossible();

// Makes the waits of the C library in a block kill points, if CanEndHere().
class KillableWait {
public:
    KillableWait();
    ~KillableWait();
    KillableWait(const KillableWait&) = delete;
    KillableWait& operator=(const KillableWait&) = delete;
};
} // namespace kernel

// The kill point: does not return if the calling thread is being killed and CanEndHere(). A load
// and a branch in all other threads.
inline void CheckKilled()
{
    if (kernel::tKillRequest && kernel::tKillRequest->load(std::memory_order_relaxed)) [[unlikely]]
        kernel::EndIfPossible();
}
