#pragma once

#include "OS.h"

namespace kernel {
// What the system says of one of its threads.
struct TaskStat {
    char state = 0; // 'R' running or ready, 'T' stopped, others blocked
    bigtime_t userTime = 0;
    bigtime_t kernelTime = 0;
};

// Reads the record of a thread of this process; false if there is no such thread.
[[nodiscard]] bool ReadTaskStat(pid_t tid, TaskStat& stat);

// Takes a record of /proc/PID/task/TID/stat apart; the name in it may contain anything. False if it
// is damaged.
[[nodiscard]] bool ParseTaskStat(const char* record, TaskStat& stat);
} // namespace kernel
