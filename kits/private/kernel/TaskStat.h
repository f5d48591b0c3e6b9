#pragma once

#include "OS.h"

namespace kernel {
// What the system says of one of its threads.
struct TaskStat {
    char state = 0; // 'R' running or ready, 'T' stopped, others blocked
    bigtime_t userTime = 0;
    bigtime_t kernelTime = 0;
    uint64 startTicks = 0; // when it was started, since the machine was
};

// Reads the record of a thread of this process; false if there is no such thread.
[[nodiscard]] bool ReadTaskStat(pid_t tid, TaskStat& stat);

// Likewise of a process, of any user's. False, too, where the system hides those of others.
[[nodiscard]] bool ReadProcessStat(pid_t pid, TaskStat& stat);

// A process, told from a later one of the same number.
struct ProcessTag {
    pid_t pid = 0;
    uint64 start = 0; // TaskStat::startTicks

    [[nodiscard]] static ProcessTag Of(pid_t pid);
    // Not one that has ended and was only not waited for yet.
    [[nodiscard]] bool Lives() const;
    [[nodiscard]] bool IsStopped() const;
    // Kills it if it still lives; without a word where that is not permitted.
    void Kill() const;
};

// Takes a record of /proc/PID/task/TID/stat apart; the name in it may contain anything. False if it
// is damaged.
[[nodiscard]] bool ParseTaskStat(const char* record, TaskStat& stat);
} // namespace kernel
