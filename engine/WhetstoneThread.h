// A Whetstone on a thread of its own.
#pragma once

#include "engine/Whetstone.h"

#include <OS.h>

class WhetstoneThread {
public:
    WhetstoneThread() = default;
    // Ends the thread and waits for that: it works on this object.
    virtual ~WhetstoneThread();
    WhetstoneThread(const WhetstoneThread&) = delete;
    WhetstoneThread& operator=(const WhetstoneThread&) = delete;

    // Once only. Makes the thread "WhetstoneThread_NUMBER", which will do that many iterations; it
    // waits for resume_thread(). Returns its id, or the kernel's error with a line on standard
    // error.
    thread_id Go(const long& newIterations, const long& number);

    static int32 DoStaticWhetstone(void* self);
    // The thread's work. Returns 0.
    int32 DoWhetstone();

    Whetstone whetstone;
    int32 iterations = 0;
    thread_id thread = 0;
};
