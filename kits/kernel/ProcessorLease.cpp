#include "kits/kernel/ProcessorLease.h"

#include "kits/kernel/CpuTopology.h"
#include "kits/kernel/KillGuard.h"
#include "kits/kernel/LeaseKeeper.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace kernel {
ProcessorLease::ProcessorLease(const std::string& root, const std::vector<int>& numbers)
{
    const KillGuard guard;
    fSwitches.fill(-1);
    for (size_t i = 0; i < numbers.size() && i < fSwitches.size(); i++)
        fSwitches[i] = open(ProcessorSwitchPath(root, numbers[i]).c_str(), O_WRONLY | O_CLOEXEC);
}

ProcessorLease::~ProcessorLease()
{
    const KillGuard guard;
    Stop();
    for (const int file : fSwitches) {
        if (file >= 0)
            close(file);
    }
}

bool ProcessorLease::CanSwitch(int32 index) const
{
    return index >= 0 && index < kMost && fSwitches[static_cast<size_t>(index)] >= 0;
}

int ProcessorLease::Set(int32 index, bool on)
{
    const KillGuard guard;
    if (!CanSwitch(index))
        return EBADF;
    int answer;
    // Once more for the case that somebody has killed the keeper.
    for (int tries = 0; tries < 2; tries++) {
        if (fConnection < 0) {
            if (const int error = Start(); error != 0)
                return error;
        }
        if (Ask(index, on, answer)) {
            if (answer == 0)
                fIsOff[static_cast<size_t>(index)] = !on;
            return answer;
        }
        Stop();
    }
    return EPIPE;
}

bool ProcessorLease::Ask(int32 index, bool on, int& answer)
{
    const LeaseRequest request { static_cast<uint8>(index), on };
    if (send(fConnection, &request, sizeof(request), MSG_NOSIGNAL) != sizeof(request))
        return false;
    ssize_t length;
    do
        length = recv(fConnection, &answer, sizeof(answer), 0);
    while (length < 0 && errno == EINTR);
    return length == sizeof(answer);
}

int ProcessorLease::Start()
{
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        return errno;
    LeaseKeeper keeper;
    keeper.connection = ends[1];
    keeper.process = static_cast<int>(syscall(SYS_pidfd_open, getpid(), 0));
    keeper.switches = fSwitches;
    keeper.isOff = fIsOff;
    const int error = StartLeaseKeeper(keeper);
    close(ends[1]);
    if (keeper.process >= 0)
        close(keeper.process);
    if (error == 0)
        fConnection = ends[0];
    else
        close(ends[0]);
    return error;
}

void ProcessorLease::Stop()
{
    if (fConnection >= 0)
        close(fConnection);
    fConnection = -1;
}
} // namespace kernel
