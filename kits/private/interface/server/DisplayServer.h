// The display server: one private thread that owns QApplication and every widget. It starts with
// its first use and ends with the program. It never waits for any other thread, so any thread, with
// whatever locks of loopers it holds, may wait for it.
//
//   not started --Start()--> running --exit()--> stopped
//
// Prepare() does half of the first step: Start() waits for the other half, as exit() does.
// Once stopped, a Call runs nothing and returns an empty value.
#pragma once

#include "Mutex.h"

#include <functional>
#include <memory>
#include <type_traits>

namespace display {

// Starts the server unless it runs. False, after one line on standard error for the whole program,
// where there is no display; callable again.
bool Start();
// Begins to start it and does not wait for it, see prepare_windows().
void Prepare();
// Starts it for what needs no window, fonts and painting, even where there is no display: Calls run
// then, and Start() stays false. False, with a line on standard error, if it cannot have a thread.
bool StartForPictures();
// Whether Calls run; starts the server as Start() does unless it runs.
bool Serves();

// For whoever finds a connection of its own to the display broken, which ends the program as Qt
// does for its: with a line on standard error and status 1. Needs no lock and waits for no thread.
[[noreturn]] void EndWithDisplay();

// The parts of Call and Post that are not templates. job is run once, or not at all if the server
// is stopped; RunAndWait() waits for it. Both start the server.
void RunAndWait(const std::function<void()>& job);
void RunLater(std::function<void()> job);

// Runs f on the server's thread, in order with all other calls, and returns its value: an empty one
// where there is no display. Not a kill point. From the server's own thread f runs at once.
template <typename F>
auto Call(F&& f)
{
    using Result = std::invoke_result_t<F>;
    if constexpr (std::is_void_v<Result>) {
        RunAndWait([&f] { f(); });
    } else {
        Result result {};
        RunAndWait([&f, &result] { result = f(); });
        return result;
    }
}

// Runs f on the server's thread some time, in order with all other calls.
template <typename F>
void Post(F&& f)
{
    RunLater(std::function<void()>(std::forward<F>(f)));
}

} // namespace display
