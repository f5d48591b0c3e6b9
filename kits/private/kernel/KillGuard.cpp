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
constinit thread_local int tStateBefore = PTHREAD_CANCEL_ENABLE;
} // namespace

KillGuard::KillGuard()
{
    if (tGuards++ == 0)
        pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &tStateBefore);
}

KillGuard::~KillGuard()
{
    if (--tGuards == 0)
        pthread_setcancelstate(tStateBefore, nullptr);
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
} // namespace kernel
