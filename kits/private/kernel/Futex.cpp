#include "Futex.h"

#include <climits>
#include <ctime>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kernel {
static_assert(sizeof(std::atomic<uint32>) == sizeof(uint32));

void FutexWait(const std::atomic<uint32>& word, uint32 value, bigtime_t deadline)
{
    const timespec until { deadline / 1000000, deadline % 1000000 * 1000 };
    syscall(SYS_futex, &word, FUTEX_WAIT_BITSET_PRIVATE, value, deadline < 0 ? nullptr : &until,
        nullptr, FUTEX_BITSET_MATCH_ANY);
}

void FutexWake(const std::atomic<uint32>& word)
{
    syscall(SYS_futex, &word, FUTEX_WAKE_PRIVATE, INT_MAX, nullptr, nullptr, 0);
}
} // namespace kernel
