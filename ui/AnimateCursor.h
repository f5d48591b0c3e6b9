// The mouse pointer that moves while the program is busy.
#pragma once

#include "foundation/LibString.h"

#include <OS.h>

#include <array>
#include <atomic>
#include <vector>

// Bytes of a frame in the platform's cursor format: size, depth, hot spot y and x, then 16 rows of
// image and 16 of mask with 16 bits each.
constexpr int32 kCursorBytes = 68;

// Idle --Run()--> Running --Quit()--> Idle, where the pointer is the platform's hand again. While
// running, a thread of its own shows one frame after the other.
class AnimateCursor {
public:
    // No thread is started for an empty name, nor without frames.
    AnimateCursor(const char* name, const long& frames);
    ~AnimateCursor(); // as Quit(), if running
    AnimateCursor(const AnimateCursor&) = delete;
    AnimateCursor& operator=(const AnimateCursor&) = delete;

    // Copies kCursorBytes into a frame. A bad index changes nothing. Only in Idle.
    void SetCursor(const long& index, const unsigned char* data);
    // Shows each frame for period seconds; one below 0 or not a number keeps the former period.
    // While running, nothing but the period changes.
    void Run(const float& period);
    void Quit();

private:
    static int32 RunLoop(void* self);
    void LoopCursors();
    void Pause() const;

    LibString name;
    std::atomic<float> period = 0.1f;
    std::vector<std::array<unsigned char, kCursorBytes>> frames; // unfilled ones begin with 0
    std::atomic<bool> running = false;
    thread_id thread = -1;
};

// The frames of the pointer during a run: a wheel with two dark quarters that turns by a fourth of
// a quarter from frame to frame, so that the last is followed smoothly by the first.
constexpr int32 kNbrBusyCursors = 4;

extern const unsigned char kBusyCursors[kNbrBusyCursors][kCursorBytes];
