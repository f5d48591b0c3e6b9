// What BApplication tells the roster about itself.
#pragma once

#include "Roster.h"

// The application that runs in this process; NULL: none any more.
void SetRunningApplication(const app_info* info);
