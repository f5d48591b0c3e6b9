#include "ProcessorLease.h"

#include "CpuTopology.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kernel {
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

namespace {
struct LeaseRequest {
    uint8 index;
    bool on;
};

// The process that switches processors on behalf of ours. It sends its number (a pid_t) over the
// connection, then answers each LeaseRequest that comes by an int, 0 or an error number. When the
// connection or our process ends it switches on what it or one before it has switched off, removes
// the note of that, and ends.
struct LeaseKeeper {
    int connection;
    int process; // a descriptor of ours, -1: none (a child of ours may keep the connection open)
    std::array<int, 8> switches; // descriptors, -1: none
    std::array<bool, 8> isOff;
    std::string note; // a path
};

// From the fork on only what may be called in a signal handler: the locks of the other threads,
// which the new process does not have, may be taken for ever.

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
    closefrom(next); // also on kernels without close_range(), as below a container
    return true;
}

// Starts one. Its descriptors are copies and the only ones it has; signals to our process group or
// terminal do not reach it, and it is nobody's child that would have to be waited for. 0 or an
// error number.
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
} // namespace

ProcessorLease::ProcessorLease(const std::string& root, const std::vector<int>& numbers)
    : fRoot(root), fNumbers(numbers)
{
    fSwitches.fill(-EBADF);
    for (size_t i = 0; i < numbers.size(); i++) {
        const int file = open(ProcessorSwitchPath(root, numbers[i]).c_str(), O_WRONLY | O_CLOEXEC);
        fSwitches[i] = file >= 0 ? file : -errno;
    }
}

ProcessorLease::~ProcessorLease()
{
    End();
    for (const int file : fSwitches) {
        if (file >= 0)
            close(file);
    }
}

bool ProcessorLease::CanSwitch(size_t index) const
{
    return fSwitches[index] >= 0;
}

int ProcessorLease::Set(size_t index, bool on)
{
    if (!CanSwitch(index))
        return -fSwitches[index];
    return on ? SwitchOn(index) : SwitchOff(index);
}

int ProcessorLease::SwitchOff(size_t index)
{
    if (fConnection < 0) { // it is named in the note
        if (const int error = Start(); error != 0)
            return error;
    }
    fIsOff[index] = true;
    int error = Note();
    if (error == 0 && IsTakenByAnother(fRoot, fNumbers[index]))
        error = EALREADY;
    if (error == 0) {
        error = AskKeeper(index, false);
        if (error != 0) // it may be off nevertheless, if the keeper was killed before it answered
            (void)WriteSwitch(fSwitches[index], true);
    }
    if (error != 0) {
        fIsOff[index] = false;
        (void)Note(); // the worst is a note of what is on
    }
    return error;
}

int ProcessorLease::SwitchOn(size_t index)
{
    if (AskKeeper(index, true) != 0) {
        if (const int error = WriteSwitch(fSwitches[index], true); error != 0)
            return error;
    }
    fIsOff[index] = false;
    (void)Note();
    return 0;
}

void ProcessorLease::End()
{
    if (fConnection >= 0) {
        shutdown(fConnection, SHUT_WR);
        char none; // it ends when it has switched on what is off
        (void)Receive(&none, sizeof(none));
        Stop();
    }
    for (size_t i = 0; i < kMost; i++) {
        if (fIsOff[i] && WriteSwitch(fSwitches[i], true) == 0)
            fIsOff[i] = false;
    }
    (void)Note(); // what it says is left to the next start
}

// Writes down what is off. 0 or an error number.
int ProcessorLease::Note()
{
    if (fNote.path.empty())
        return fNoteError;
    fNote.off.clear();
    for (size_t i = fNumbers.size(); i-- > 0;) {
        if (fIsOff[i])
            fNote.off.push_back(fNumbers[i]);
    }
    return fNote.Write();
}

// The system's answer, or EPIPE: no keeper can be had.
int ProcessorLease::AskKeeper(size_t index, bool on)
{
    for (int tries = 0; tries < 2; tries++) {
        if (fConnection < 0 && Start() != 0)
            break;
        if (int answer; Ask(index, on, answer))
            return answer;
        fprintf(stderr, "The keeper of switched processors, process <%d>, was %s: replaced\n",
            static_cast<int>(fNote.keeper.pid), fNote.keeper.IsStopped() ? "stopped" : "killed");
        Stop();
    }
    return EPIPE;
}

bool ProcessorLease::Ask(size_t index, bool on, int& answer)
{
    const LeaseRequest request { static_cast<uint8>(index), on };
    return send(fConnection, &request, sizeof(request), MSG_NOSIGNAL | MSG_DONTWAIT)
        == sizeof(request)
        && Receive(&answer, sizeof(answer));
}

// From the keeper; false if it has ended or is stopped. One that is at work is waited for: the
// system may take a minute to switch a processor off while threads are started all the time.
bool ProcessorLease::Receive(void* data, size_t size)
{
    constexpr int kMostMillis = 120000, kLookMillis = 50, kMostStopped = 10;
    int stopped = 0;
    for (int millis = 0; millis < kMostMillis && stopped < kMostStopped; millis += kLookMillis) {
        pollfd source { fConnection, POLLIN, 0 };
        const int ready = poll(&source, 1, kLookMillis);
        if (ready > 0)
            return recv(fConnection, data, size, MSG_DONTWAIT) == static_cast<ssize_t>(size);
        stopped = fNote.keeper.IsStopped() ? stopped + 1 : 0;
    }
    return false;
}

int ProcessorLease::Start()
{
    if (fNote.path.empty())
        fNote = OwnNote(fRoot, fNoteError);
    if (fNote.path.empty())
        return fNoteError;
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        return errno;
    LeaseKeeper keeper;
    keeper.connection = ends[1];
    keeper.process = static_cast<int>(syscall(SYS_pidfd_open, getpid(), 0));
    for (size_t i = 0; i < kMost; i++)
        keeper.switches[i] = std::max(fSwitches[i], -1);
    keeper.isOff = fIsOff;
    keeper.note = fNote.path;
    const int error = StartLeaseKeeper(keeper);
    close(ends[1]);
    if (keeper.process >= 0)
        close(keeper.process);
    fConnection = ends[0];
    fNote.keeper = {};
    pid_t pid = 0;
    if (error == 0 && Receive(&pid, sizeof(pid))) {
        fNote.keeper = ProcessTag::Of(pid);
        return Note();
    }
    Stop();
    return error != 0 ? error : EAGAIN;
}

// Only where all is on, or the keeper is no use any more: else it would switch on.
void ProcessorLease::Stop()
{
    fNote.keeper.Kill();
    if (fConnection >= 0)
        close(fConnection);
    fConnection = -1;
}
} // namespace kernel
