#include "MailAgent.h"

#include "Errors.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Runs a program found along PATH, with the open file as its input, and waits for its end.
status_t RunProgram(const std::vector<std::string>& command, int input)
{
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (input >= 0)
        posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    pid_t child = 0;
    const int error =
        posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        return B_LAUNCH_FAILED;
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) { }
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return B_OK;
    fprintf(stderr, "<%s> did not take the mail\n", arguments[0]);
    return B_ERROR;
}

std::string HeaderOr(const MailParts& parts, const char* name, const char* other)
{
    const auto found = parts.headers.find(name);
    return found != parts.headers.end() ? found->second : other;
}

} // namespace

std::string FindMailAgent()
{
    const char* path = getenv("PATH");
    std::istringstream folders(std::string(path ? path : "") + ":/usr/sbin:/usr/lib:/sbin");
    for (std::string folder; std::getline(folders, folder, ':');) {
        const std::string agent = folder + "/sendmail";
        if (!folder.empty() && access(agent.c_str(), X_OK) == 0)
            return agent;
    }
    return "";
}

status_t GiveToAgent(const std::string& agent, int file)
{
    // -t: to whom the headers say; -oi: a line with a point alone does not end the message.
    return RunProgram({ agent, "-oi", "-t" }, file);
}

status_t OpenInMailer(const MailParts& parts)
{
    std::vector<std::string> command { "xdg-email", "--utf8", "--subject",
        HeaderOr(parts, "Subject", ""), "--body", parts.text };
    for (const std::string& path : parts.enclosures)
        command.insert(command.end(), { "--attach", path });
    command.push_back(HeaderOr(parts, "To", ""));
    return RunProgram(command, -1);
}
