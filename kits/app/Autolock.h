// Holds a lock for the length of a block, whichever way the block is left.
#pragma once

#include "Locker.h"

#include <memory>

class BLooper;

class SCOPED_CAPABILITY BAutolock {
public:
    // Waits for the looper's lock. The looper may be NULL, or have been deleted before or while the
    // caller waits: then nothing is locked. It may quit inside the block too.
    explicit BAutolock(BLooper* looper) ACQUIRE(looper);
    explicit BAutolock(BLocker& locker) ACQUIRE(locker);
    ~BAutolock() RELEASE();
    BAutolock(const BAutolock&) = delete;
    BAutolock& operator=(const BAutolock&) = delete;

    // False where the looper is not there: the block must leave it alone.
    bool IsLocked() const { return fLock != nullptr; }

private:
    explicit BAutolock(std::shared_ptr<LooperLock> lock); // keeps it only if it got it

    std::shared_ptr<LooperLock> fLock; // outlives the looper
};
