// Sets the time zone of the whole program for the length of a block; afterwards it is the system's.
#pragma once

#include <cstdlib>
#include <ctime>

class ZoneGuard {
public:
    explicit ZoneGuard(const char* zone)
    {
        setenv("TZ", zone, 1);
        tzset();
    }
    ~ZoneGuard()
    {
        unsetenv("TZ");
        tzset();
    }
    ZoneGuard(const ZoneGuard&) = delete;
    ZoneGuard& operator=(const ZoneGuard&) = delete;
};
