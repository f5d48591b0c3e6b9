#include "kits/kernel/TaskStat.h"

#include "kits/kernel/KillGuard.h"

#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace kernel {
bool ParseTaskStat(const char* record, TaskStat& stat)
{
    const char* nameEnd = strrchr(record, ')');
    unsigned long userTicks, kernelTicks;
    if (!nameEnd
        || sscanf(nameEnd, ") %c %*d %*d %*d %*d %*d %*u %*u %*u %*u %*u %lu %lu", &stat.state,
               &userTicks, &kernelTicks)
            != 3)
        return false;
    const bigtime_t ticksPerSecond = sysconf(_SC_CLK_TCK);
    stat.userTime = static_cast<bigtime_t>(userTicks) * 1000000 / ticksPerSecond;
    stat.kernelTime = static_cast<bigtime_t>(kernelTicks) * 1000000 / ticksPerSecond;
    return true;
}

bool ReadTaskStat(pid_t tid, TaskStat& stat)
{
    const KillGuard guard;
    char path[48];
    snprintf(path, sizeof(path), "/proc/self/task/%d/stat", static_cast<int>(tid));
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return false;
    char record[512];
    const ssize_t length = read(file, record, sizeof(record) - 1);
    close(file);
    if (length <= 0)
        return false;
    record[length] = 0;
    return ParseTaskStat(record, stat);
}
} // namespace kernel
