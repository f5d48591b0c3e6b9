// std::mutex with Clang's thread-safety attributes, so that a Clang build proves which lock guards
// what. Nothing is added to the locks themselves.
#pragma once

#include <condition_variable>
#include <mutex>

#if defined(__clang__)
#define TARVEX_THREAD_ATTRIBUTE(x) __attribute__((x))
#else
#define TARVEX_THREAD_ATTRIBUTE(x)
#endif

#define CAPABILITY(x) TARVEX_THREAD_ATTRIBUTE(capability(x))
#define SCOPED_CAPABILITY TARVEX_THREAD_ATTRIBUTE(scoped_lockable)
#define GUARDED_BY(x) TARVEX_THREAD_ATTRIBUTE(guarded_by(x))
#define REQUIRES(...) TARVEX_THREAD_ATTRIBUTE(requires_capability(__VA_ARGS__))
#define EXCLUDES(...) TARVEX_THREAD_ATTRIBUTE(locks_excluded(__VA_ARGS__))
#define ACQUIRE(...) TARVEX_THREAD_ATTRIBUTE(acquire_capability(__VA_ARGS__))
#define RELEASE(...) TARVEX_THREAD_ATTRIBUTE(release_capability(__VA_ARGS__))
#define TRY_ACQUIRE(...) TARVEX_THREAD_ATTRIBUTE(try_acquire_capability(__VA_ARGS__))
#define ASSERT_HELD(...) TARVEX_THREAD_ATTRIBUTE(assert_capability(__VA_ARGS__))
#define NO_THREAD_SAFETY_ANALYSIS TARVEX_THREAD_ATTRIBUTE(no_thread_safety_analysis)

// A LeafLock holds it.
class CAPABILITY("mutex") Mutex {
public:
    void lock() ACQUIRE() { fMutex.lock(); }
    void unlock() RELEASE() { fMutex.unlock(); }
    bool try_lock() TRY_ACQUIRE(true) { return fMutex.try_lock(); }

private:
    std::mutex fMutex;
};

// Waits on a Mutex that the caller holds: `while (!ready) fChanged.wait(fLock);`
using Condition = std::condition_variable_any;
