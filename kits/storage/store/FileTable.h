// Which row of the store is that of a file. A row belongs to the file, known by its inode and time
// of birth, and remembers the path at which it was last written. So, what happens to a file's
// attributes, resources and application information when it is
//   renamed or moved, by a BEntry or a tool: they go along (by a tool, within its file system);
//   written to, truncated, edited in place: they stay;
//   replaced by another one at its path: the new file has none, unless both are programs. A linker
//     and a package manager make a program anew at its path, and the new one is the old one for the
//     user: what it kept with itself, as the machines it compares, must still be there;
//   removed by BEntry::Remove(): they are removed, else they are kept in case it is a disk that is
//     not there just now. A row whose path another file has taken lasts kMostDaysReplaced.
// On a file system without times of birth a row belongs to path and inode.
#pragma once

#include "kits/storage/NodeIdentity.h"
#include "Sqlite.h"

namespace store {

constexpr int kMostDaysReplaced = 30;

// The file's row; 0: none. In a transaction.
[[nodiscard]] int64 FindFile(sqlite3* database, const NodeIdentity& file);
// The file's row, made if there is none, and brought up to date. In a writing transaction; so are
// the others. Throws B_ENTRY_NOT_FOUND: the file has no path any more.
[[nodiscard]] int64 ClaimFile(sqlite3* database, const NodeIdentity& file);
void RemoveFile(sqlite3* database, const NodeIdentity& file);
// What was at the path from, with all below it, is now at the path to, and what was there is not
// any more.
void MoveFiles(sqlite3* database, const std::string& from, const std::string& to);
void RemoveLongReplaced(sqlite3* database);

} // namespace store
