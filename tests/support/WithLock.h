#pragma once

#include <Looper.h>

// What f returns, called with the looper locked.
template <typename F>
auto WithLock(BLooper* looper, F f)
{
    const struct Guard {
        BLooper* looper;
        ~Guard() { looper->Unlock(); }
    } guard { looper };
    looper->Lock();
    return f();
}
