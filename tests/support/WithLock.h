#pragma once

#include <Autolock.h>
#include <Looper.h>

// What f returns, called with the looper locked.
template <typename F>
auto WithLock(BLooper* looper, F f)
{
    const BAutolock lock(looper);
    return f();
}
