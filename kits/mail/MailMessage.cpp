#include "E-mail.h"
#include "Errors.h"
#include "MimeMessage.h"
#include "OwnLibrary.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <spawn.h>
#include <sstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Writes headers, text and enclosures as a MIME message into the open file, and goes back to its
// beginning. B_LAUNCH_FAILED, with a line on standard error: the library cannot be loaded; else as
// its function.
status_t WriteMimeMessage(const MailParts& parts, int file)
{
    using Write = decltype(&tarvex_write_mime_message);
    const auto write = OwnFunction<Write>("mime", "tarvex_write_mime_message");
    const status_t status = write ? write(parts, file) : B_LAUNCH_FAILED;
    return status == B_OK && lseek(file, 0, SEEK_SET) != 0 ? B_DEVICE_FULL : status;
}

// Sends what a program wrote on to standard error. Its first line is the result.
std::string TellErrors(FILE* errors)
{
    rewind(errors);
    std::string first;
    char line[256] = "";
    while (fgets(line, sizeof line, errors)) {
        fputs(line, stderr);
        if (first.empty())
            first.assign(line, strcspn(line, "\r\n"));
    }
    return first;
}

// Runs a program found along PATH, with the open file as its input, and waits for its end. Where it
// fails, why is what it said first, or how it ended. B_LAUNCH_FAILED, and why empty: it cannot be
// run.
status_t RunProgram(const std::vector<std::string>& command, int input, std::string& why)
{
    std::vector<char*> arguments;
    for (const std::string& argument : command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (input >= 0)
        posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    const std::unique_ptr<FILE, int (*)(FILE*)> errors(tmpfile(), fclose);
    if (errors)
        posix_spawn_file_actions_adddup2(&actions, fileno(errors.get()), STDERR_FILENO);
    pid_t child = 0;
    const int error =
        posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    while (error == 0 && waitpid(child, &status, 0) < 0 && errno == EINTR) { }
    why = errors ? TellErrors(errors.get()) : "";
    if (error != 0)
        return B_LAUNCH_FAILED;
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return B_OK;
    if (why.empty())
        why = WIFEXITED(status)
            ? command[0] + " ended with status " + std::to_string(WEXITSTATUS(status))
            : command[0] + " was ended";
    fprintf(stderr, "<%s> did not take the mail\n", arguments[0]);
    return B_ERROR;
}

std::string HeaderOr(const MailParts& parts, const char* name, const char* other)
{
    const auto found = parts.headers.find(name);
    return found != parts.headers.end() ? found->second : other;
}

// The path of the "sendmail" program along PATH, or where systems keep it apart from users'
// programs; empty if there is none.
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

// Runs the agent with the message as its input. B_OK when it has taken the message; else as
// BMailMessage::Send(), and why for people.
status_t GiveToAgent(const MailParts& parts, const std::string& agent, std::string& why)
{
    const std::unique_ptr<FILE, int (*)(FILE*)> message(tmpfile(), fclose);
    if (!message) {
        why = "there is no room for the mail";
        return B_DEVICE_FULL;
    }
    status_t status = WriteMimeMessage(parts, fileno(message.get()));
    if (status != B_OK) {
        why = "the mail cannot be written";
        return status;
    }
    // -t: to whom the headers say; -oi: a line with a point alone does not end the message.
    status = RunProgram({ agent, "-oi", "-t" }, fileno(message.get()), why);
    if (status == B_LAUNCH_FAILED) {
        why = agent + " cannot be run";
        fprintf(stderr, "<%s> cannot be run\n", agent.c_str());
    }
    return status;
}

// Opens the desktop's mailer with the message, for the user to send. The same errors.
status_t OpenInMailer(const MailParts& parts, std::string& why)
{
    std::vector<std::string> command { "xdg-email", "--utf8", "--subject",
        HeaderOr(parts, "Subject", ""), "--body", parts.text };
    for (const std::string& path : parts.enclosures)
        command.insert(command.end(), { "--attach", path });
    command.push_back(HeaderOr(parts, "To", ""));
    const status_t status = RunProgram(command, -1, why);
    if (status == B_LAUNCH_FAILED) {
        why = "there is neither sendmail nor xdg-email";
        fprintf(stderr, "There is no mail agent: neither <sendmail> nor <xdg-email> can be run\n");
    }
    return status;
}

// "Subject: " and "Subject" are the same field.
std::string FieldName(const char* name)
{
    const std::string text(name);
    return text.substr(0, text.find(':'));
}

bool IsOneLine(const char* text)
{
    return text && !strpbrk(text, "\r\n");
}

} // namespace

BMailMessage::BMailMessage() : fParts(std::make_unique<MailParts>()) { }

BMailMessage::~BMailMessage() = default;

status_t BMailMessage::AddHeaderField(const char* fieldName, const char* text, bool clobber)
{
    if (!IsOneLine(fieldName) || !IsOneLine(text) || FieldName(fieldName).empty())
        return B_BAD_VALUE;
    const auto [field, isNew] = fParts->headers.try_emplace(FieldName(fieldName), text);
    if (!isNew && !clobber)
        return B_ERROR;
    field->second = text;
    return B_OK;
}

status_t BMailMessage::AddContent(const char* text, int32 length, bool clobber)
{
    if (!text || length < 0)
        return B_BAD_VALUE;
    if (!fParts->text.empty() && !clobber)
        return B_ERROR;
    fParts->text.assign(text, static_cast<size_t>(length));
    return B_OK;
}

status_t BMailMessage::AddEnclosure(const char* path, bool clobber)
{
    struct stat info { };
    if (!path)
        return B_BAD_VALUE;
    if (stat(path, &info) != 0)
        return B_ENTRY_NOT_FOUND;
    if (S_ISDIR(info.st_mode))
        return B_BAD_VALUE;
    if (clobber)
        fParts->enclosures.clear();
    fParts->enclosures.push_back(path);
    return B_OK;
}

status_t BMailMessage::Send(bool, bool)
{
    fIsLeftToUser = false;
    if (fParts->headers.count("To") == 0) {
        fError = "it is to nobody";
        return B_BAD_VALUE;
    }
    const std::string agent = FindMailAgent();
    const status_t status =
        agent.empty() ? OpenInMailer(*fParts, fError) : GiveToAgent(*fParts, agent, fError);
    if (status == B_OK) {
        fError.clear(); // what it said was no complaint
        fIsLeftToUser = agent.empty();
    }
    return status;
}
