#include "console/Output.h"

#include "foundation/Utf8.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

int gOutputError = 0;

} // namespace

void OpenStandardFiles()
{
    // The system gives the lowest free number, so the gaps are filled from below.
    FILE* file = nullptr;
    do { // never closed, but for the first one that is none of the three
        file = fopen("/dev/null", "r");
    } while (file && fileno(file) <= STDERR_FILENO);
    if (file)
        fclose(file);
}

void FlushOutput()
{
    errno = 0;
    const bool isSent = fflush(stdout) == 0 && ferror(stdout) == 0;
    if (isSent || gOutputError != 0)
        return;
    // What failed at an earlier call has left its mark on the stream, but not its reason: one byte
    // more fails for the same.
    if (errno == 0 && fputc('\n', stdout) != EOF)
        fflush(stdout);
    gOutputError = errno != 0 ? errno : EIO;
}

std::string FinishOutput()
{
    FlushOutput();
    if (gOutputError == 0)
        return "";
    return std::string("cannot write <standard output>: ") + strerror(gOutputError);
}

void Tell(const std::string& message)
{
    // Names of files and machines are in it: none may send commands to the terminal.
    fprintf(stderr, "tarvex-run: %s\n", LibPrintable(message.c_str()).c_str());
}

int Refuse(const std::string& message)
{
    Tell(message);
    return kNothingRun;
}

bool IsOutputBroken()
{
    return gOutputError == EPIPE;
}
