#include "MachineRun.h"

#include "NamedSocket.h"
#include "Processors.h"
#include "RunNotes.h"
#include "SystemTree.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <pwd.h>
#include <sstream>
#include <unistd.h>

// The lock is a listening socket with a name of its own. A second one's name, which all can read
// too, tells since when: nobody has to answer.

namespace {
constexpr char kSince[] = "-since-";

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
    const int asking = kernel::ConnectTo(name);
    ucred who {};
    const bool isKnown = asking >= 0 && kernel::PeerOf(asking, who);
    if (asking >= 0)
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
    fLock = kernel::ListenAs(fName);
    if (fLock >= 0) {
        fStart = kernel::ListenAs(fName + kSince + std::to_string(time(nullptr)));
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
