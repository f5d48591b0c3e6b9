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
BAutolock::BAutolock(BLooper* looper) : BAutolock(AppRegistry::Instance().Looper(looper).lock) { }

BAutolock::BAutolock(BLocker& locker) : BAutolock(locker.fLock) { }

BAutolock::BAutolock(std::shared_ptr<LooperLock> lock) : fLock(std::move(lock))
{
    if (fLock && fLock->Lock(B_INFINITE_TIMEOUT) != B_OK)
        fLock.reset();
}

BAutolock::~BAutolock()
{
    if (fLock)
        fLock->Unlock();
}
