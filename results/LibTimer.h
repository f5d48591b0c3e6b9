// The stopwatch. Start may be called again at any time; Stop and Elapsed count from the last one,
// from the machine's own start without any.
#pragma once

#include <OS.h>

class LibTimer {
public:
    virtual ~LibTimer() = default;

    void Start();
    // Seconds since Start.
    float Stop();
    // The same, without stopping.
    float Elapsed() const;
    // Microseconds from the latest Start to the latest Stop, exactly.
    bigtime_t Micros() const { return stop - start; }
    // Both times on standard error.
    void PrintToStream() const;

private:
    bigtime_t start = 0; // system_time() of the latest Start and Stop
    bigtime_t stop = 0;
};
