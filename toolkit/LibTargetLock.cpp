#include "toolkit/LibTargetLock.h"

#include <Looper.h>

namespace {

BLooper* LockedLooper(const BMessenger& target)
{
    BLooper* looper = nullptr;
    if (target.LockTarget())
        target.Target(&looper);
    return looper;
}

} // namespace

// Locked twice, once by name: the second lock ends with the block, the first here.
LibTargetLock::LibTargetLock(const BMessenger& target) NO_THREAD_SAFETY_ANALYSIS
    : looper(LockedLooper(target)),
      lock(looper)
{
    if (looper)
        looper->Unlock();
}
