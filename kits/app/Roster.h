// Knows the running applications: on this system the program itself.
#pragma once

#include "Entry.h"
#include "Messenger.h"
#include "StorageDefs.h"

struct app_info {
    thread_id thread = -1; // its main thread
    team_id team = -1;
    port_id port = -1; // of its main looper
    uint32 flags = 0; // B_MULTIPLE_LAUNCH and the like
    entry_ref ref; // the program file
    char signature[B_MIME_TYPE_LENGTH] = "";
};

enum {
    B_SINGLE_LAUNCH = 0,
    B_MULTIPLE_LAUNCH = 1,
    B_EXCLUSIVE_LAUNCH = 2,
    B_LAUNCH_MASK = 3,
    B_BACKGROUND_APP = 4,
    B_ARGV_ONLY = 8,
};

class BRoster {
public:
    // Fill *info. B_ERROR: no such application is known to run; B_BAD_VALUE: a NULL argument. *info
    // is then as it was.
    status_t GetAppInfo(const char* signature, app_info* info) const;
    status_t GetRunningAppInfo(team_id team, app_info* info) const;
    // Starts the desktop's program for a type with the strings "argv" of the message, which names
    // the program itself first: its mailer for "text/x-email" ("mailto:" and an address, a subject
    // behind "-subject", a text behind "-body"), otherwise what opens the address or path that
    // comes next. B_LAUNCH_FAILED: there is no such program, or nothing to open; B_BAD_VALUE: NULL.
    status_t Launch(const char* mimeType, BMessage* initialMessage = nullptr) const;
};

extern const BRoster* const be_roster;
