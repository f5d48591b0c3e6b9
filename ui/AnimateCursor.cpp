#include "ui/AnimateCursor.h"

#include <Application.h>

#include <algorithm>
#include <cstdio>

namespace {

// Of one sleep, in microseconds: no period floods the display, none keeps Quit() waiting.
constexpr double kShortestPause = 1000;
constexpr double kLongestPause = 50000;

} // namespace

AnimateCursor::AnimateCursor(const char* threadName, const long& nbrFrames)
    : name(threadName), frames(size_t(std::max(nbrFrames, 0L)))
{
}

AnimateCursor::~AnimateCursor()
{
    if (running)
        Quit();
}

void AnimateCursor::SetCursor(const long& index, const unsigned char* data)
{
    if (index < 0 || size_t(index) >= frames.size())
        return;
    std::copy_n(data, kCursorBytes, frames[size_t(index)].begin());
}

void AnimateCursor::Run(const float& newPeriod)
{
    if (name.IsBlank() || frames.empty())
        return;
    if (newPeriod >= 0)
        period = newPeriod;
    if (running)
        return;
    running = true;
    thread = spawn_thread(RunLoop, name, B_NORMAL_PRIORITY, this);
    if (thread < B_OK) { // the pointer stays as it is
        fprintf(stderr, "Cannot start thread <%s>\n", name.operator const char*());
        running = false;
        return;
    }
    resume_thread(thread);
}

void AnimateCursor::Quit()
{
    running = false;
    // Not done by the thread's state alone: one that waits for a moment inside SetCursor() is not
    // running either, and still uses this object.
    status_t value = B_OK;
    wait_for_thread(thread, &value);
    thread = -1;
    be_app->SetCursor(B_HAND_CURSOR);
}

int32 AnimateCursor::RunLoop(void* self)
{
    static_cast<AnimateCursor*>(self)->LoopCursors();
    return B_OK;
}

void AnimateCursor::LoopCursors()
{
    while (running) {
        for (const auto& frame : frames) {
            if (!running)
                return;
            if (frame[0] != 0)
                be_app->SetCursor(frame.data());
            Pause();
        }
    }
}

// Sleeps for the period, but ends soon when Quit() waits.
void AnimateCursor::Pause() const
{
    const bigtime_t start = system_time();
    do {
        const double left = double(period) * 1e6 - double(system_time() - start);
        snooze(bigtime_t(std::clamp(left, kShortestPause, kLongestPause)));
    } while (running && double(system_time() - start) < double(period) * 1e6);
}
