// The end of a wait that may be woken several times before it is over.
#pragma once

#include <chrono>

#include "KillGuard.h"
#include "Mutex.h"
#include "OS.h"

class Deadline {
public:
    // Timeout in microseconds from now; B_INFINITE_TIMEOUT: never.
    explicit Deadline(bigtime_t timeout)
        : fEndless(timeout > kLongest),
          fEnd(std::chrono::steady_clock::now() + std::chrono::microseconds(fEndless ? 0 : timeout))
    {
    }

    // Waits to be woken, perhaps without cause; false once the deadline has passed. A kill point.
    bool Wait(Condition& condition, Mutex& mutex) const REQUIRES(mutex)
    {
        const kernel::KillableWait killable;
        if (!fEndless)
            return condition.wait_until(mutex, fEnd) == std::cv_status::no_timeout;
        condition.wait(mutex);
        return true;
    }

private:
    static constexpr bigtime_t kLongest = 1'000'000'000'000'000; // thirty years; fits the clock

    bool fEndless;
    std::chrono::steady_clock::time_point fEnd;
};
