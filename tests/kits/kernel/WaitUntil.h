#pragma once

#include <chrono>
#include <thread>

// Whether condition comes true; gives up only after a time that a healthy program never needs.
template <typename Condition>
[[nodiscard]] bool WaitUntil(Condition condition, int mostSeconds = 20)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(mostSeconds);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}
