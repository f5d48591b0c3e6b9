// Other programs, as the platform's roster launches them: the desktop's own for a kind of thing.
#include <strings.h>

#include "Message.h"
#include "ProgramStart.h"
#include "Roster.h"

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
    else if (arguments.size() >= 2)
        command = { "xdg-open", arguments[1] };
    if (command.empty() || !StartProgram(command))
        return B_LAUNCH_FAILED;
    return B_OK;
}
