// A mail message: headers, a text, and files that go with it. It is handed to the machine's own
// mail agent (a program "sendmail"); where there is none, the desktop's mailer opens with it.
#pragma once

#include "SupportDefs.h"

#include <memory>
#include <string>

struct MailParts;

// Names of header fields, as AddHeaderField() takes them.
#define B_MAIL_TO "To: "
#define B_MAIL_CC "Cc: "
#define B_MAIL_BCC "Bcc: "
#define B_MAIL_FROM "From: "
#define B_MAIL_REPLY "Reply-To: "
#define B_MAIL_SUBJECT "Subject: "
#define B_MAIL_PRIORITY "Priority: "

class BMailMessage {
public:
    BMailMessage();
    ~BMailMessage();
    BMailMessage(const BMailMessage&) = delete;
    BMailMessage& operator=(const BMailMessage&) = delete;

    // Sets a field to a text in UTF-8, in place of what it was with clobber. B_BAD_VALUE: NULL, or
    // a line break in either; B_ERROR: the field is set and there is no clobber.
    status_t AddHeaderField(const char* fieldName, const char* text, bool clobber = false);
    // The message's text, length bytes of UTF-8. Errors as above.
    status_t AddContent(const char* text, int32 length, bool clobber = false);
    // A file that goes with it, read when it is sent; with clobber in place of those added before.
    // B_ENTRY_NOT_FOUND: there is no such file; B_BAD_VALUE: NULL or a directory.
    status_t AddEnclosure(const char* path, bool clobber = false);

    // Hands the message over and waits until it was taken. The agent keeps what it cannot deliver
    // at once, so sendNow makes no difference. B_BAD_VALUE: no "To: "; B_ENTRY_NOT_FOUND: an
    // enclosure cannot be read; B_LAUNCH_FAILED, with a line on standard error: there is neither
    // agent nor mailer, or it cannot be run; B_ERROR, likewise: it refused the message;
    // B_DEVICE_FULL: the temporary files leave no room for it.
    status_t Send(bool sendNow = false, bool removeAfterSending = false);
    // Beside the platform's calls, of the last Send(). Why it did not work, for people: what the
    // agent said first, or that there is none; empty if it worked.
    const std::string& Error() const { return fError; }
    // Whether the desktop's mailer has the message, for the user to send.
    bool IsLeftToUser() const { return fIsLeftToUser; }

private:
    const std::unique_ptr<MailParts> fParts;
    std::string fError;
    bool fIsLeftToUser = false;
};
