// Which row of the store is that of a file. A row belongs to the file, known by device, inode and
// time of birth, and remembers the path at which it was last seen. So, what happens to a file's
// attributes, resources and application information when it is
//   renamed or moved, by a BEntry or a tool: they go along (by a tool, within its file system);
//   written to, truncated, edited in place: they stay;
//   replaced by another one at its path, or removed and made anew: the new file has none, unless it
//     is the program that runs. A linker and a package manager make a program anew at its path, and
//     the new one is the old one for the user: what it kept with itself, as the machines it
//     compares, must still be there;
//   removed by BEntry::Remove(), or its inode is seen with another file: they are removed;
//   gone from its path in any other way: it may have been moved, so they last kMostDaysMissed from
//     when that is noticed, and kMostDaysAway where its whole file system is not there: a disk that
//     may come back.
// Device numbers change where a file system has no id of its own: at its path a file is known by
// inode and time of birth alone, and on a file system without times of birth by its inode.
#pragma once

#include "Locations.h"
#include "Sqlite.h"

namespace store {

constexpr int64 kMostDaysMissed = 30;
constexpr int64 kMostDaysAway = 365;
constexpr int64 kMostLookedAt = 100; // rows each time that a store is opened

// The file's row; 0: none. In a transaction.
[[nodiscard]] int64 FindFile(sqlite3* database, const NodeIdentity& file);
// Whether the row that was found for the file should be brought up to date: the file is not where
// it was.
[[nodiscard]] bool HasMoved(sqlite3* database, int64 row, const NodeIdentity& file);
// The file's row, made if there is none, and brought up to date. In a writing transaction; so are
// the others. Throws B_ENTRY_NOT_FOUND: the file has no path any more.
[[nodiscard]] int64 ClaimFile(sqlite3* database, const NodeIdentity& file);
void RemoveFile(sqlite3* database, const NodeIdentity& file);
// What was at the path from, with all below it, is now at the path to, and what was there is not
// any more.
void MoveFiles(sqlite3* database, const std::string& from, const std::string& to);
// Looks whether files are still there and removes the rows of those that have been missed for long.
// Not in a transaction.
void RemoveMissed(sqlite3* database);

} // namespace store
