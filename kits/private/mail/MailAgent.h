// The programs that send mail.
#pragma once

#include "MailParts.h"

#include "SupportDefs.h"

// The path of the "sendmail" program along PATH, or where systems keep it apart from users'
// programs; empty if there is none.
std::string FindMailAgent();

// Runs the agent with the message in the open file as its input. B_OK when it has taken the
// message; B_LAUNCH_FAILED, B_ERROR: see BMailMessage::Send().
status_t GiveToAgent(const std::string& agent, int file);
// Opens the desktop's mailer with the message, for the user to send. The same errors.
status_t OpenInMailer(const MailParts& parts);
