// What a file is, and when it was made, changed and read.
#pragma once

#include <Entry.h>

#include "foundation/LibDateTime.h"

// Copies the entry's MIME type into type, which must have room for B_MIME_TYPE_LENGTH bytes; with
// describe "Folder", "Be Application" (an executable), "Symbolic Link" or "Unknown" instead. False,
// and type as it was, if there is no such entry.
bool LibGetMimeType(const entry_ref& ref, char* type, bool describe = false);
// Set the entry's MIME type. False if there is no such entry, or the type is too long.
bool LibSetMimeType(const char* path, const char* type);
bool LibSetFileType(const char* path, const char* type);

// The moment in the user's time zone, or in UTC if not local. Where there is no such entry no date
// at 00:00:00; the functions that are given no BEntry say so on standard error.
[[nodiscard]] LibDateTime LibCreationDate(const entry_ref& ref, const bool& local = true);
[[nodiscard]] LibDateTime LibCreationDate(const char* path, const bool& local = true);
[[nodiscard]] LibDateTime LibLastModifiedDate(const BEntry& entry, const bool& local = true);
[[nodiscard]] LibDateTime LibLastModifiedDate(const char* path, const bool& local = true);
[[nodiscard]] LibDateTime LibAccessedDate(const BEntry& entry, const bool& local = true);
