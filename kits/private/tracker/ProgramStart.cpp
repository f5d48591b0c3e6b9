#include "ProgramStart.h"

#include <csignal>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "LeafLock.h"

namespace {

Mutex gLock;
std::vector<pid_t> gChildren GUARDED_BY(gLock);

// Ended programs leave the process table; the others are asked the next time.
void Bury() REQUIRES(gLock)
{
    std::erase_if(gChildren, [](pid_t child) { return waitpid(child, nullptr, WNOHANG) != 0; });
}

} // namespace

bool StartProgram(const std::vector<std::string>& command)
{
    std::vector<std::string> texts(command);
    std::vector<char*> arguments;
    for (std::string& text : texts)
        arguments.push_back(text.data());
    arguments.push_back(nullptr);

    const LeafLock lock(gLock);
    Bury();
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t none;
    sigemptyset(&none);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    pid_t child = -1;
    const int error =
        posix_spawnp(&child, arguments[0], nullptr, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    if (error == 0)
        gChildren.push_back(child);
    return error == 0;
}
