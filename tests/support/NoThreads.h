#pragma once

#include <cstdint>
#include <pthread.h>

// While it lives no thread can be made in this process: the default stack is larger than what can
// be addressed.
class NoThreads {
public:
    NoThreads()
    {
        pthread_getattr_default_np(&fBefore);
        pthread_attr_t huge = fBefore;
        pthread_attr_setstacksize(&huge, SIZE_MAX / 2 & ~size_t { 0xffff });
        pthread_setattr_default_np(&huge);
    }
    ~NoThreads()
    {
        pthread_setattr_default_np(&fBefore);
        pthread_attr_destroy(&fBefore);
    }
    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;

private:
    pthread_attr_t fBefore;
};
