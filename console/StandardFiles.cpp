#include "console/StandardFiles.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

void OpenStandardFiles()
{
    FILE* file = nullptr;
    do { // never closed, but for the first one that is none of the three
        file = fopen("/dev/null", "r");
    } while (file != nullptr && fileno(file) <= STDERR_FILENO);
    if (file != nullptr)
        fclose(file);
}

std::string FinishOutput()
{
    errno = 0;
    if (fflush(stdout) == 0 && ferror(stdout) == 0)
        return "";
    const char* why = errno != 0 ? strerror(errno) : "an error before";
    return std::string("cannot write <standard output>: ") + why;
}
