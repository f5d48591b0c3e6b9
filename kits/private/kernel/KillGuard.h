// What the kits do so that kill_thread is safe. A thread is killed only at a kill point: a kit call
// that says CheckKilled(), or a C-library cancellation point (sleep, read, write, a wait on a
// condition). Its stack is then unwound, so what objects on it hold is given back.
//
// A KillGuard is needed around C-library cancellation points that must not be kill points: while a
// lock is held that is not an object on the stack, while data is half changed, and in destructors
// and noexcept functions that do input or output (being unwound through those ends the program;
// CheckKilled sees them and waits, the C library does not).
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

// False under a KillGuard and while a destructor or noexcept function is under way.
[[nodiscard]] bool CanEndHere();

// Ends the calling thread, its stack unwound, if CanEndHere().
void EndIfPossible();
} // namespace kernel

// The kill point: does not return if the calling thread is being killed and CanEndHere(). A load
// and a branch in all other threads.
inline void CheckKilled()
{
    if (kernel::tKillRequest && kernel::tKillRequest->load(std::memory_order_relaxed)) [[unlikely]]
        kernel::EndIfPossible();
}
