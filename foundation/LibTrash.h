// Entries put away: into the trash, or copied beside themselves.
#pragma once

#include <Path.h>

// Moves the entry into the trash, as its name with " copy" after it or, where that is taken,
// " copy 1", " copy 2" and so on. Beside it a record of where it was and when it was moved is kept
// as the desktop's trash wants it, so that a file manager can put it back. False, and the entry
// stays, if that failed, with a line on standard error if report.
bool LibTrash(const BPath& path, const bool& report = true);
// Copies the entry, and a directory with all in it, to a new name in the same directory, made as
// that in the trash. False if it could not be copied whole.
bool LibDuplicate(const char* path);
