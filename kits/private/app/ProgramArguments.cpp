#include "ProgramArguments.h"

#include <fstream>

#include "LeafLock.h"

namespace {

Mutex gLock;
std::vector<std::string> gArguments GUARDED_BY(gLock);

} // namespace

std::vector<std::string> ProgramArguments()
{
    {
        const LeafLock lock(gLock);
        if (!gArguments.empty())
            return gArguments;
    }
    std::vector<std::string> arguments;
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    for (std::string argument; std::getline(file, argument, '\0');)
        arguments.push_back(argument);
    return arguments;
}

void SetProgramArguments(std::vector<std::string> arguments)
{
    const LeafLock lock(gLock);
    gArguments.swap(arguments);
}
