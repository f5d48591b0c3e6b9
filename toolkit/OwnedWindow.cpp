#include "toolkit/OwnedWindow.h"

#include <Looper.h>

namespace {

// Leaves the looper locked, so this is no block. Null if it has gone.
BLooper* LockedLooper(const BMessenger& target)
{
    BLooper* looper = nullptr;
    if (target.LockTarget())
        target.Target(&looper);
    return looper;
}

} // namespace

// Locked twice, once by name, which is no block and ends here: the second lock ends with the block.
LibTargetLock::LibTargetLock(const BMessenger& target) NO_THREAD_SAFETY_ANALYSIS
    : looper(LockedLooper(target)),
      lock(looper)
{
    if (looper)
        looper->Unlock();
}
