#include "E-mail.h"
#include "Errors.h"
#include "MailAgent.h"
#include "MimeMessage.h"

#include <cstdio>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace {

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
    if (fParts->headers.count("To") == 0)
        return B_BAD_VALUE;
    const std::string agent = FindMailAgent();
    status_t status = B_LAUNCH_FAILED;
    if (!agent.empty()) {
        FILE* message = tmpfile();
        if (!message)
            return B_DEVICE_FULL;
        status = WriteMimeMessage(*fParts, fileno(message));
        if (status == B_OK && lseek(fileno(message), 0, SEEK_SET) == 0)
            status = GiveToAgent(agent, fileno(message));
        fclose(message);
    } else {
        status = OpenInMailer(*fParts);
    }
    if (status == B_LAUNCH_FAILED)
        fprintf(stderr, "There is no mail agent: neither <sendmail> nor <xdg-email> can be run\n");
    return status;
}
