// Processes of a test's own, for what may happen in one only once or would end the tests.
#pragma once

#include <cstdio>
#include <sys/wait.h>
#include <unistd.h>

// Runs action in a new process, which exits with what it returns.
template <typename Action>
pid_t StartChild(Action action)
{
    fflush(stdout); // or ThreadSanitizer does it in each child that ends
    const pid_t child = fork();
    if (child == 0)
        _exit(action());
    return child;
}

// Waits for it: its exit status, or minus the signal that ended it.
inline int EndOf(pid_t child)
{
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

template <typename Action>
int InChild(Action action)
{
    return EndOf(StartChild(action));
}
