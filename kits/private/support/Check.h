// TARVEX_CHECK(condition) << values: a check of our own invariants, active in debug and sanitizer
// builds only. Never for what comes from outside (files, users, tools): that gets a result and a
// line on standard error.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <sstream>

// Collects the text of a failed check and ends the program with it on standard error.
class CheckFailure {
public:
    CheckFailure(const char* condition, const char* file, int line)
    {
        fText << file << ":" << line << ": <" << condition << "> does not hold ";
    }
    ~CheckFailure()
    {
        fprintf(stderr, "%s\n", fText.str().c_str());
        abort();
    }
    std::ostream& Stream() { return fText; }

private:
    std::ostringstream fText;
};

#ifdef TARVEX_CHECKS
#define TARVEX_CHECK(condition)                                                                    \
    if (condition) [[likely]] {                                                                    \
    } else                                                                                         \
        CheckFailure(#condition, __FILE__, __LINE__).Stream()
#else
#define TARVEX_CHECK(condition)                                                                    \
    while (false)                                                                                  \
    CheckFailure(#condition, __FILE__, __LINE__).Stream()
#endif
