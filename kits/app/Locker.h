// A program's own lock, for what several of its loopers share. A BAutolock holds it; there is no
// Lock() to be forgotten. The thread that holds it may take it again. It comes after the locks of
// loopers: its holder locks none and calls no window.
#pragma once

#include "Mutex.h"

#include <memory>

class LooperLock;

class CAPABILITY("locker") BLocker {
public:
    BLocker(); // free
    BLocker(const BLocker&) = delete;
    BLocker& operator=(const BLocker&) = delete;

private:
    friend class BAutolock;

    const std::shared_ptr<LooperLock> fLock;
};
