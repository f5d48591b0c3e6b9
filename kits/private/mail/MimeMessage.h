// The message as bytes on their way. They are written by a library of its own, see CMakeLists.txt.
#pragma once

#include "SupportDefs.h"

#include <map>
#include <string>
#include <vector>

// What a BMailMessage holds.
struct MailParts {
    std::map<std::string, std::string> headers; // by name, without the colon
    std::string text;
    std::vector<std::string> enclosures; // paths
};

// Writes headers, text and enclosures as a MIME message into the open file. B_ENTRY_NOT_FOUND, with
// a line on standard error: an enclosure cannot be read; B_DEVICE_FULL: file cannot be written.
extern "C" status_t tarvex_write_mime_message(const MailParts& parts, int file);
