#include "Autolock.h"

#include "AppRegistry.h"
#include "Looper.h"
#include "LooperLock.h"

BLocker::BLocker() : fLock(std::make_shared<LooperLock>())
{
    // It begins held by its maker, for a looper that is not to run yet.
    fLock->Release();
}

// Not by the looper's own functions: it may be gone.
BAutolock::BAutolock(BLooper* looper) : fLock(AppRegistry::Instance().Looper(looper).lock)
{
    Lock();
}

BAutolock::BAutolock(BLocker& locker) : fLock(locker.fLock)
{
    Lock();
}

BAutolock::~BAutolock()
{
    if (fLock)
        fLock->Unlock();
}

void BAutolock::Lock()
{
    if (fLock && fLock->Lock(B_INFINITE_TIMEOUT) != B_OK)
        fLock.reset();
}
