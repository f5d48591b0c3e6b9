#include "TaskStat.h"

#include "SystemTree.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace kernel {
bool ParseTaskStat(const char* record, TaskStat& stat)
{
    // The second field is the name in brackets, which any program chooses and which may hold
    // brackets and blanks: what is behind the last one is safe.
    const char* nameEnd = strrchr(record, ')');
    unsigned long userTicks, kernelTicks;
    unsigned long long startTicks = 0;
    // Fields 3 (state), 14 and 15 (ticks used) and 22 (tick of the start); see proc(5).
    const char* const format = ") %c %*d %*d %*d %*d %*d %*u %*u %*u %*u %*u %lu %lu"
                               " %*d %*d %*d %*d %*d %*d %llu";
    if (!nameEnd || sscanf(nameEnd, format, &stat.state, &userTicks, &kernelTicks, &startTicks) < 3)
        return false;
    stat.startTicks = startTicks;
    const bigtime_t ticksPerSecond = sysconf(_SC_CLK_TCK);
    stat.userTime = static_cast<bigtime_t>(userTicks) * 1000000 / ticksPerSecond;
    stat.kernelTime = static_cast<bigtime_t>(kernelTicks) * 1000000 / ticksPerSecond;
    return true;
}

bool ReadTaskStat(pid_t tid, TaskStat& stat)
{
    const std::string record = ReadText("/proc/self/task/" + std::to_string(tid) + "/stat");
    return ParseTaskStat(record.c_str(), stat);
}

bool ReadProcessStat(pid_t pid, TaskStat& stat)
{
    return ParseTaskStat(ReadText("/proc/" + std::to_string(pid) + "/stat").c_str(), stat);
}

ProcessTag ProcessTag::Of(pid_t pid)
{
    TaskStat stat;
    return { pid, ReadProcessStat(pid, stat) ? stat.startTicks : 0 };
}

bool ProcessTag::Lives() const
{
    if (pid <= 0)
        return false;
    TaskStat stat;
    // A number is given out again, but not with the same start. One that waits for its parent to
    // ask for its value (Z) runs no more.
    if (ReadProcessStat(pid, stat))
        return stat.startTicks == start && stat.state != 'Z' && stat.state != 'X';
    return kill(pid, 0) == 0 || errno == EPERM; // hidden
}

bool ProcessTag::IsStopped() const
{
    TaskStat stat;
    return pid > 0 && ReadProcessStat(pid, stat) && stat.startTicks == start
        && (stat.state == 'T' || stat.state == 't');
}

void ProcessTag::Kill() const
{
    if (Lives())
        kill(pid, SIGKILL);
}
} // namespace kernel
