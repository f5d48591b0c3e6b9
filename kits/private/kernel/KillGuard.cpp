#include "KillGuard.h"

#include "UnwindCheck.h"

#include <pthread.h>

#if defined(__SANITIZE_ADDRESS__)
// The marks that AddressSanitizer puts around a frame's variables stay behind when a kill unwinds
// the frame, and the next user of that stack is reported for them. With this they are not on the
// stack.
extern "C" const char* __asan_default_options()
{
    return "detect_stack_use_after_return=1";
}
#endif

namespace {
constinit thread_local int tGuards = 0;
} // namespace

KillGuard::KillGuard()
{
    tGuards++;
}

KillGuard::~KillGuard()
{
    tGuards--;
}

namespace kernel {
constinit thread_local const std::atomic<bool>* tKillRequest = nullptr;

bool CanEndHere()
{
    return tGuards == 0 && StackCanBeUnwound();
}

void EndIfPossible()
{
    if (!CanEndHere())
        return;
    tKillRequest = nullptr; // the destructors that run now must not get here again
    pthread_exit(nullptr);
}

// In a thread that the kit does not know nobody cancels, but for reasons of its own.
KillableWait::KillableWait()
{
    if (tKillRequest && CanEndHere())
        pthread_setcancelstate(PTHREAD_CANCEL_ENABLE, nullptr);
}

KillableWait::~KillableWait()
{
    if (tKillRequest)
        pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, nullptr);
}
} // namespace kernel
