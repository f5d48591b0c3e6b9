#include "Check.h"

#include <cstdio>
#include <cstdlib>

CheckFailure::CheckFailure(const char* condition, const char* file, int line)
{
    fText << file << ":" << line << ": <" << condition << "> does not hold ";
}

CheckFailure::~CheckFailure()
{
    fprintf(stderr, "%s\n", fText.str().c_str());
    abort();
}
