// The message as bytes on their way. The only file beside its source that knows the MIME library.
#pragma once

#include "MailParts.h"

#include "SupportDefs.h"

// Writes headers, text and enclosures as a MIME message into the open file. B_ENTRY_NOT_FOUND, with
// a line on standard error: an enclosure cannot be read; B_DEVICE_FULL: file cannot be written.
status_t WriteMimeMessage(const MailParts& parts, int file);
