#include "kits/kernel/KillGuard.h"

#include "kits/kernel/UnwindCheck.h"

#include <pthread.h>

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
