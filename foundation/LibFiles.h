// Files and folders as people have to do with them: what they are, when they were made, how big
// they are, put into the trash, opened, and for a while only.
#pragma once

#include "foundation/LibDateTime.h"
#include "foundation/LibString.h"

#include <Entry.h>
#include <Path.h>

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

// Moves the entry into the trash, as its name with " copy" after it or, where that is taken,
// " copy 1", " copy 2" and so on. Beside it a record of where it was and when it was moved is kept
// as the desktop's trash wants it, so that a file manager can put it back. False, and the entry
// stays, if that failed, with a line on standard error if report.
bool LibTrash(const BPath& path, const bool& report = true);
// Copies the entry, and a directory with all in it, to a new name in the same directory, made as
// that in the trash. False if it could not be copied whole.
bool LibDuplicate(const char* path);

// Opens the file manager's information window on the entry. False if the entry's directory does not
// exist or there is no file manager to ask; what it then does is its own affair.
bool LibInfoEntry(const char* path);
// Opens the entry, as if the user had done so in the file manager. False as above.
bool LibOpenEntry(const char* path);

// Sets text to the number, with so many decimals, and its unit: "MB" from 1048577 bytes on, "KB"
// from 1025 on, else "bytes". Plain bytes get decimals too.
void LibBytesToString(const uint32& bytes, LibString& text, int decimals = 0);
// The bytes of a number, a blank and the unit "KB" or "MB", a fraction of a byte cut off; at most
// what a uint32 holds, and 0 for a negative number. Any other unit, or none, gives 0. What is no
// number gives 0 too, and a line on standard error.
[[nodiscard]] uint32 LibStringToBytes(const char* text);

// A folder for temporary files that no other program uses. At the end of a block it is gone, with
// all in it, and a process that the tools left in it is back in the folder that it was in before.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // Null if it could not be made.
    [[nodiscard]] const char* Path() const { return exists ? path.Path() : nullptr; }

private:
    BPath path;
    BPath before; // the working directory
    bool exists = false;
};
