#include "LeaseKeeper.h"

#include <cerrno>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

// From the fork on only what may be called in a signal handler: the locks of the other threads,
// which the new process does not have, may be taken for ever.
namespace kernel {
namespace {
// Returns whether all are on.
bool SwitchOnAgain(const LeaseKeeper& keeper)
{
    bool isDone = true;
    for (size_t i = 0; i < keeper.switches.size(); i++) {
        if (keeper.isOff[i] && WriteSwitch(keeper.switches[i], true) != 0)
            isDone = false;
    }
    return isDone;
}

[[noreturn]] void Keep(LeaseKeeper& keeper)
{
    const pid_t self = getpid();
    if (write(keeper.connection, &self, sizeof(self)) != sizeof(self))
        _exit(1);
    for (;;) {
        pollfd sources[] = { { keeper.connection, POLLIN, 0 }, { keeper.process, POLLIN, 0 } };
        if (poll(sources, 2, -1) < 0)
            continue; // interrupted
        if (sources[1].revents != 0)
            break;
        LeaseRequest request;
        const ssize_t length = read(keeper.connection, &request, sizeof(request));
        if (length != sizeof(request) || request.index >= keeper.switches.size())
            break;
        const int answer = WriteSwitch(keeper.switches[request.index], request.on);
        if (answer == 0)
            keeper.isOff[request.index] = !request.on;
        if (write(keeper.connection, &answer, sizeof(answer)) != sizeof(answer))
            break;
    }
    if (SwitchOnAgain(keeper))
        unlink(keeper.note.c_str()); // else the next program to start tries again
    _exit(0);
}

void CloseFrom(int first)
{
    if (syscall(SYS_close_range, static_cast<unsigned>(first), ~0u, 0) == 0)
        return;
    rlimit limit {};
    getrlimit(RLIMIT_NOFILE, &limit);
    for (rlim_t file = static_cast<rlim_t>(first); file < limit.rlim_cur; file++)
        close(static_cast<int>(file));
}

// Makes the descriptors 0 and up, and closes all others.
bool MoveDescriptors(LeaseKeeper& keeper)
{
    int* const all[] = { &keeper.connection, &keeper.process, &keeper.switches[0],
        &keeper.switches[1], &keeper.switches[2], &keeper.switches[3], &keeper.switches[4],
        &keeper.switches[5], &keeper.switches[6], &keeper.switches[7] };
    constexpr int kOutOfTheWay = 32; // above all that are overwritten below
    for (int* file : all) {
        if (*file >= 0 && (*file = fcntl(*file, F_DUPFD, kOutOfTheWay)) < 0)
            return false;
    }
    int next = 0;
    for (int* file : all) {
        if (*file >= 0)
            *file = dup2(*file, next++);
    }
    CloseFrom(next);
    return true;
}
} // namespace

int WriteSwitch(int file, bool on)
{
    constexpr int kMostTries = 100;
    const timespec pause { 0, 10000000 };
    const char state = on ? '1' : '0';
    for (int tries = 1; pwrite(file, &state, 1, 0) != 1; tries++) {
        if (!on || errno != EBUSY || tries == kMostTries)
            return errno;
        nanosleep(&pause, nullptr);
    }
    return 0;
}

int StartLeaseKeeper(LeaseKeeper keeper)
{
    // The new process keeps all signals blocked: none ends it, and no handler of ours runs in it.
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    const pid_t between = fork();
    if (between == 0) {
        setsid();
        const pid_t child = fork();
        if (child != 0)
            _exit(child < 0 ? 1 : 0);
        prctl(PR_SET_NAME, "tarvex-lease");
        if (chdir("/") != 0 || !MoveDescriptors(keeper))
            _exit(1);
        Keep(keeper);
    }
    const int error = between < 0 ? errno : 0;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    if (error != 0)
        return error;
    int status = 0;
    while (waitpid(between, &status, 0) < 0 && errno == EINTR)
        ;
    return status == 0 ? 0 : EAGAIN;
}
} // namespace kernel
