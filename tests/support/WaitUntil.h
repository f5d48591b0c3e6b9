#pragma once

#include <chrono>
#include <thread>

// Whether condition comes true; gives up only after a time that a healthy program never needs.
template <typename Condition>
[[nodiscard]] bool WaitUntil(Condition condition, double mostSeconds = 20, int pollMilliseconds = 1)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + std::chrono::duration<double>(mostSeconds);
    while (!condition()) {
        if (Clock::now() > end)
            return condition();
        std::this_thread::sleep_for(std::chrono::milliseconds(pollMilliseconds));
    }
    return true;
}
