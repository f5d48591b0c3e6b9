#include "MachineRun.h"

#include "Processors.h"
#include "RunNotes.h"
#include "SystemTree.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <pwd.h>
#include <sstream>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

// The lock is a listening socket with a name of its own, not a file: there is no folder that every
// user may write to and nobody can spoil, it goes with its process, and the system itself tells who
// listens. A second socket's name, which all can read too, tells since when: nobody has to answer.

namespace {
constexpr char kSince[] = "-since-";

// Names that begin with a zero byte are no files.
socklen_t AddressOf(const std::string& name, sockaddr_un& address)
{
    address = {};
    address.sun_family = AF_UNIX;
    const size_t length = name.copy(address.sun_path + 1, sizeof(address.sun_path) - 1);
    return static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + length);
}

int NewSocket()
{
    return socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
}

// A listening socket of that name, -1 if it cannot be had.
int Listen(const std::string& name)
{
    sockaddr_un address;
    const socklen_t length = AddressOf(name, address);
    const int lock = NewSocket();
    if (lock < 0)
        return -1;
    if (bind(lock, reinterpret_cast<sockaddr*>(&address), length) == 0
        && listen(lock, SOMAXCONN) == 0)
        return lock;
    const int error = errno;
    close(lock);
    errno = error;
    return -1;
}

std::string UserName(uid_t user)
{
    passwd entry;
    passwd* found = nullptr;
    char text[4096];
    if (getpwuid_r(user, &entry, text, sizeof(text), &found) == 0 && found)
        return found->pw_name;
    return "user " + std::to_string(user);
}

// Who listens there; "" if that is not known.
std::string ListenerOf(const std::string& name)
{
    sockaddr_un address;
    const socklen_t length = AddressOf(name, address);
    const int asking = NewSocket();
    if (asking < 0)
        return "";
    ucred who {};
    socklen_t size = sizeof(who);
    const bool isKnown = connect(asking, reinterpret_cast<sockaddr*>(&address), length) == 0
        && getsockopt(asking, SOL_SOCKET, SO_PEERCRED, &who, &size) == 0;
    close(asking);
    if (!isKnown)
        return "";
    const std::string process = " (process " + std::to_string(who.pid) + ")";
    return UserName(who.uid) + (who.pid > 0 ? process : ""); // 0: in a container
}

// " since 2026-11-21 14:03:05", or "".
std::string SinceOf(const std::string& name)
{
    const std::string wanted = " @" + name + kSince;
    std::istringstream sockets(kernel::ReadText("/proc/net/unix"));
    for (std::string line; std::getline(sockets, line);) {
        const size_t found = line.find(wanted);
        if (found == std::string::npos)
            continue;
        const time_t start = kernel::NumberAt(line.substr(found + wanted.size()), 0);
        tm local;
        char text[64];
        if (start > 0 && start <= time(nullptr) && localtime_r(&start, &local)
            && strftime(text, sizeof(text), " since %Y-%m-%d %H:%M:%S", &local) > 0)
            return text;
    }
    return "";
}

std::string Listed(std::vector<int> numbers)
{
    std::sort(numbers.begin(), numbers.end());
    std::string list;
    for (const int number : numbers)
        list += (list.empty() ? "" : ", ") + std::to_string(number);
    return (numbers.size() == 1 ? "Processor " : "Processors ") + list;
}
} // namespace

BMachineRun::BMachineRun(const char* name) : fName(name) { }

BMachineRun::~BMachineRun()
{
    End();
}

status_t BMachineRun::Begin()
{
    if (fLock >= 0)
        return B_OK;
    fLock = Listen(fName);
    if (fLock >= 0) {
        fStart = Listen(fName + kSince + std::to_string(time(nullptr)));
        return B_OK;
    }
    if (errno != EADDRINUSE) {
        fprintf(stderr, "Cannot find out whether another run is under way: %s\n", strerror(errno));
        return B_ERROR;
    }
    const std::string listener = ListenerOf(fName);
    fHolder = (listener.empty() ? "another program" : listener) + SinceOf(fName);
    return B_BUSY;
}

void BMachineRun::End()
{
    for (int* file : { &fStart, &fLock }) {
        if (*file >= 0)
            close(*file);
        *file = -1;
    }
}

std::string restore_processors()
{
    const std::string root = kernel::Processors::Get()->Root();
    const kernel::LeftOff left = kernel::SwitchOnLeftOff(root);
    if (!left.nowOn.empty())
        kernel::Processors::SetRoot(root); // which looks anew, at all of them
    std::string text;
    if (!left.nowOn.empty())
        text = Listed(left.nowOn) + " had been left off by a run that was killed: now on again";
    if (!left.stillOff.empty())
        text += (text.empty() ? "" : ". ") + Listed(left.stillOff)
            + " left off by a run that was killed cannot be switched on: " + strerror(left.error);
    return text;
}
