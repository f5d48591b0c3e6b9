// Paths, entries and directories. Functions that set an output leave it alone when they return
// false.
#pragma once

#include "foundation/LibString.h"

#include <Entry.h>
#include <FindDirectory.h>
#include <Path.h>

class BMessage;

// The directory of the user's settings; always true. The second form cuts the path to size bytes,
// end mark included.
bool LibGetSettingsPath(LibString& path);
bool LibGetSettingsPath(char* path, const int& size);
// Sets result to the first existing directory/file of the directories that the environment
// variable lists with ":" between them, in that order; empty ones are passed over. False if there
// is none or no such variable.
bool LibFindEnvFile(const char* variable, const char* file, BPath& result);
// Sets tool to the program of that name among the system's own tools. False if it is not there.
bool LibFindSystemTool(const char* name, BPath& tool);

// Sets path to the entry's absolute path. False if that is not known.
bool LibGetFullPath(const entry_ref& ref, LibString& path);
bool LibGetFullPath(const entry_ref& ref, BPath& path);
// Sets path to the directory's path with name appended. False for a directory that is not known
// and a null or absolute name.
bool LibGetPath(const entry_ref& directory, const char* name, BPath& path);
// False unless the directory of path exists; the entry itself need not.
bool LibGetEntryRef(const char* path, entry_ref& ref);
// The reference of the entry's parent directory; one that is not set if there is none.
[[nodiscard]] entry_ref LibGetParentRef(const entry_ref& ref);
// Sets parent to the directory part of path, made absolute. False for the root and a bad path.
bool LibGetParentPath(const char* path, LibString& parent);
// Copies the last part of path into leaf, which must have room for B_FILE_NAME_LENGTH bytes. False
// for a bad path; the root has "".
bool LibGetChildName(const char* path, char* leaf);
// Sets path to the file that the user chose in a save panel, from the panel's reply: its fields
// "directory" and "name". False if one is missing.
bool LibGetFilePath(const BMessage* message, BPath& path);

// The process's working directory. False if it has been removed.
bool LibGetWorkingDirectory(BPath& path);
bool LibChangeDirectory(const char* path); // false if it is no directory or may not be entered
// True if there is something at path; a symbolic link counts by what it points to.
[[nodiscard]] bool LibExists(const char* path);
// Makes the directory, and those above it that are missing, for user and group to write. False if
// there is something at path already or it cannot be made.
bool Libmkdir(const char* path);
// Sets path to a name in the directory of temporary files that no other call, of this process or
// another one, gives: prefix and three numbers. Nothing is created.
void LibUniqueName(BPath& path, const char* prefix);
// The size of a file in bytes, with its attributes if wanted; of a directory the sum over the
// entries in it, down to the last, symbolic links not followed. 0 if there is none.
[[nodiscard]] off_t LibEntrySize(const char* path, bool withAttributes);

// Sets name to that under which people know the directory: "User Settings". False, and name as it
// was, if it has none.
bool LibGetStdDirName(const directory_which& which, LibString& name);
// Sets which to the directory of exactly that name. False, and which as it was, if there is none.
bool LibGetStdDirName(const char* name, directory_which& which);
// True if a standard directory has exactly that name.
[[nodiscard]] bool LibStdDirNameExists(const char* name);
