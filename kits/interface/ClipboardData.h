// Beside the platform's calls: what the user copies in this program and pastes into another.
#pragma once

#include "SupportDefs.h"

class BMessage;

// Gives data to the desktop in place of what was copied before: fields of B_MIME_TYPE, each named
// by its MIME type, the same thing in one or more of them. Text is UTF-8. It can be pasted for as
// long as the program runs, or the desktop keeps it. B_ERROR, and nothing is changed, where there
// is no display. From any thread.
status_t copy_to_clipboard(const BMessage& data);
