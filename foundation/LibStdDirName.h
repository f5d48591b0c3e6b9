// The names under which people know the standard directories: "User Settings".
#pragma once

#include <FindDirectory.h>

#include "foundation/LibString.h"

// Sets name to that of the directory. False, and name as it was, if it has none.
bool LibGetStdDirName(const directory_which& which, LibString& name);
// Sets which to the directory of exactly that name. False, and which as it was, if there is none.
bool LibGetStdDirName(const char* name, directory_which& which);
// True if a standard directory has exactly that name.
[[nodiscard]] bool LibStdDirNameExists(const char* name);
