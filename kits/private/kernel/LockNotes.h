// ThreadSanitizer no longer sees the locks of a thread that was unwound out of a blocking call of
// the C library, as a killed one may be. These tell it of them; without it they are nothing.
#pragma once

#if defined(__SANITIZE_THREAD__)
#include <sanitizer/tsan_interface.h>

namespace kernel {
inline void NoteLocked(void* lock)
{
    __tsan_acquire(lock);
}
inline void NoteUnlock(void* lock)
{
    __tsan_release(lock);
}
} // namespace kernel
#else
namespace kernel {
inline void NoteLocked(void*) { }
inline void NoteUnlock(void*) { }
} // namespace kernel
#endif
