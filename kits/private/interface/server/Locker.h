// Holds a looper's lock for a block, in calls that may come from any thread.
#pragma once

#include "Looper.h"

class Locker {
public:
    explicit Locker(BLooper* looper) : fLooper(looper), fIsLocked(looper->Lock()) { }
    ~Locker()
    {
        if (fIsLocked)
            fLooper->Unlock();
    }
    Locker(const Locker&) = delete;
    Locker& operator=(const Locker&) = delete;

private:
    BLooper* const fLooper;
    const bool fIsLocked;
};
