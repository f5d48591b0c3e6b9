// Files copied, moved, linked and packed by the system's own command-line tools. A path of any
// bytes arrives at the tool as it is.
//
// Every function returns false, and starts nothing, if the tool is missing or the command line
// exceeds 512 bytes even when it is run from inside the folder of one of its paths; most tell
// nothing of how the tool fared. For such a shorter command the process's working directory is
// changed meanwhile; LibZip, LibUnzip and LibTar always change it and leave it so: one thread at a
// time.
#pragma once

#include <Path.h>

// Copies a file, or a directory with all in it, over what is at to, or into the directory to; the
// copy gets the MIME type of from. True if the tool succeeded.
bool LibCopy(const char* from, const char* to);
// Moves an entry over the file to or into the directory to. True if the tool succeeded.
bool LibMove(const char* from, const char* to);
// Deletes an entry with all in it; no error if there is none.
bool LibUnlink(const char* path);
// Gives the file, or all files of a directory, the MIME type of what is in it. Where the platform
// brings no such tool the storage kit does it, and true means that it succeeded.
bool Libmimeset(const char* path);
// Makes the symbolic link that points to target, in place of a file at link.
bool LibSymLink(const char* target, const char* link);

// Adds source, with all in it, to the zip archive, with level 0 (stored) to 9 (smallest). A
// relative archive lies beside source; one without a dot in its name gets ".zip" after it.
bool LibZip(const char* archive, const BPath& source, int level = 9);
// Unpacks the zip archive beside it, over what is there.
bool LibUnzip(const char* archive);
// The same; false also if the tool found anything wrong, such as a damaged file or a full disk.
[[nodiscard]] bool LibUnzipWhole(const char* archive);
// Packs source, with all in it, into a new archive. A relative source lies beside the archive.
bool LibTar(const char* source, const char* archive);
