#include "Desktop.h"
#include "LeafLock.h"
#include "Message.h"
#include "Roster.h"

#include <csignal>
#include <spawn.h>
#include <strings.h>
#include <sys/wait.h>
#include <unistd.h>

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
    // What this thread has blocked would stay blocked in the program: it could not be interrupted.
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

namespace {

// The platform's mail program takes the address as "mailto:..." and texts behind -subject and
// -body.
std::vector<std::string> MailCommand(const std::vector<std::string>& arguments)
{
    std::vector<std::string> command { "xdg-email" };
    std::string address;
    for (size_t i = 1; i < arguments.size(); i++) {
        const bool isOption = arguments[i] == "-subject" || arguments[i] == "-body";
        if (isOption && i + 1 < arguments.size()) {
            command.push_back("-" + arguments[i]);
            command.push_back(arguments[++i]);
        } else {
            address = arguments[i];
        }
    }
    if (!address.empty())
        command.push_back(address);
    return command;
}

} // namespace

status_t BRoster::Launch(const char* mimeType, BMessage* initialMessage) const
{
    if (!mimeType)
        return B_BAD_VALUE;
    std::vector<std::string> arguments;
    const char* text = nullptr;
    for (int32 i = 0; initialMessage && initialMessage->FindString("argv", i, &text) == B_OK; i++)
        arguments.push_back(text);
    std::vector<std::string> command;
    if (strcasecmp(mimeType, "text/x-email") == 0)
        command = MailCommand(arguments);
    // The first one is the program's name, as main() has them.
    else if (arguments.size() >= 2)
        command = { "xdg-open", arguments[1] };
    if (command.empty() || !StartProgram(command))
        return B_LAUNCH_FAILED;
    return B_OK;
}
