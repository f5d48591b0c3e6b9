#include "Clock.h"

#include "KillGuard.h"
#include "OS.h"
#include "Thread.h"

#include <ctime>

namespace kernel {
bigtime_t Now()
{
    timespec now {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return bigtime_t { now.tv_sec } * 1000000 + now.tv_nsec / 1000;
}
} // namespace kernel

bigtime_t system_time()
{
    CheckKilled();
    return kernel::Now();
}

status_t snooze(bigtime_t microseconds)
{
    CheckKilled();
    if (microseconds <= 0)
        return B_OK;
    kernel::Thread& self = *kernel::Thread::Current();
    const bigtime_t now = kernel::Now();
    const bigtime_t deadline =
        microseconds < B_INFINITE_TIMEOUT - now ? now + microseconds : bigtime_t { -1 };
    self.asleep.store(true);
    while (deadline < 0 || kernel::Now() < deadline) {
        const uint32 wakeUps = self.wakeUps.load();
        CheckKilled();
        kernel::FutexWait(self.wakeUps, wakeUps, deadline);
    }
    self.asleep.store(false);
    return B_OK;
}
