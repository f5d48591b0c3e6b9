// Processes of a test's own, for what may happen in one only once or would end the tests.
#pragma once

#include "tests/support/Test.h"

#include <cstdio>
#include <cstdlib>
#include <grp.h>
#include <sched.h>
#include <sys/mount.h>
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

// For a child: gives up root's rights, if it has them; false where that failed.
inline bool BecomeOrdinaryUser()
{
    return geteuid() != 0
        || (setgroups(0, nullptr) == 0 && setgid(65534) == 0 && setuid(65534) == 0);
}

// What a process says on standard error that does this; what fails in it fails here.
template <typename Action>
std::string ErrorsOfChild(Action action)
{
    const auto run = [&] {
        action();
        return testing::Test::HasFailure() ? 1 : 0;
    };
    return ErrorsOf([&] { EXPECT_EQ(InChild(run), 0); });
}

// Whether this user may mount something in a process's own name space.
inline bool CanMount()
{
    return system("unshare -rm true") == 0;
}

// For a child: whether its mounts are now its own.
inline bool TakeOwnMounts()
{
    const uid_t user = geteuid();
    const gid_t group = getegid();
    if (unshare(user == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER) != 0)
        return false;
    if (user != 0) { // who has no number in the new space can make no file
        const auto map = [](auto id) {
            return std::to_string(id) + " " + std::to_string(id) + " 1";
        };
        WriteFile("/proc/self/setgroups", "deny");
        WriteFile("/proc/self/uid_map", map(user));
        WriteFile("/proc/self/gid_map", map(group));
    }
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}
