// What must hold for every input of a fuzz target, in every build.
#pragma once

#include <cstdio>
#include <cstdlib>

inline void Require(bool holds, const char* what)
{
    if (holds)
        return;
    fprintf(stderr, "<%s> does not hold\n", what);
    abort();
}
