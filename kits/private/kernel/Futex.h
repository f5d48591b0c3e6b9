// Waiting on a word of memory. Unlike a condition variable it holds nothing inside, so a thread may
// be stopped or interrupted in it at any instruction, and both calls may be made in a signal
// handler.
#pragma once

#include "SupportDefs.h"

#include <atomic>

namespace kernel {
// Sleeps while word is value, until a wake-up, a signal or the deadline (microseconds of
// system_time); negative: no deadline. May return early at any time: callers look again.
void FutexWait(const std::atomic<uint32>& word, uint32 value, bigtime_t deadline = -1);

// Wakes every thread that waits on word.
void FutexWake(const std::atomic<uint32>& word);
} // namespace kernel
