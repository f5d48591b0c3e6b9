// Holds the lock of the looper behind a messenger for the length of a block. A messenger may
// outlive its looper, whose address may then be another one's: so this never touches what has gone.
#pragma once

#include <Autolock.h>
#include <Messenger.h>

class LibTargetLock {
public:
    // Waits for the lock.
    explicit LibTargetLock(const BMessenger& target);

    // False if the looper has gone: the block must leave it alone.
    bool IsLocked() const { return lock.IsLocked(); }
    BLooper* Looper() const { return looper; } // null if it has gone

private:
    BLooper* const looper;
    const BAutolock lock;
};
