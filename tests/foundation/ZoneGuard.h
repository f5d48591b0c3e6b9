// Sets the time zone of the whole program for the length of a block.
#pragma once

#include <cstdlib>
#include <ctime>
#include <string>

class ZoneGuard {
public:
    explicit ZoneGuard(const char* zone)
        : fHadOne(getenv("TZ") != nullptr), fBefore(fHadOne ? getenv("TZ") : "")
    {
        setenv("TZ", zone, 1);
        tzset();
    }
    ~ZoneGuard()
    {
        if (fHadOne)
            setenv("TZ", fBefore.c_str(), 1);
        else
            unsetenv("TZ");
        tzset();
    }
    ZoneGuard(const ZoneGuard&) = delete;
    ZoneGuard& operator=(const ZoneGuard&) = delete;

private:
    bool fHadOne;
    std::string fBefore;
};
