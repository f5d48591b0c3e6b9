// The message as bytes on their way. It is written by a library of its own, see CMakeLists.txt.
#pragma once

#include "MailParts.h"

#include "SupportDefs.h"

// Writes headers, text and enclosures as a MIME message into the open file. B_ENTRY_NOT_FOUND, with
// a line on standard error: an enclosure cannot be read; B_DEVICE_FULL: file cannot be written;
// B_LAUNCH_FAILED, with a line on standard error: the library cannot be loaded.
status_t WriteMimeMessage(const MailParts& parts, int file);

// The library's function of the same work.
extern "C" status_t tarvex_write_mime_message(const MailParts& parts, int file);
