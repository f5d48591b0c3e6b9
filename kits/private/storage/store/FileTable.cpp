#include "FileTable.h"

#include <fcntl.h>
#include <vector>

namespace store {
namespace {

// What of a program is at its path, it or the one made after it; 0: neither.
int64 FindAtPath(sqlite3* database, const NodeIdentity& file, bool asProgram)
{
    Statement find(database, "SELECT id, inode, birth, program FROM files WHERE path = ?");
    find.Bind(file.path);
    if (!find.Next())
        return 0;
    const bool isIt = asProgram
        ? find.Number(3) != 0 && file.isProgram
        : file.IsSameNode(static_cast<uint64>(find.Number(1)), find.Number(2));
    return isIt ? find.Number(0) : 0;
}

// Whether the node is at path, on whatever device.
bool IsAt(const std::string& path, const NodeIdentity& node, NodeIdentity* there)
{
    return !path.empty() && IdentifyNode(AT_FDCWD, path, there) == B_OK
        && there->IsSameNode(node.inode, node.birth);
}

// One that has been moved there, or has other names. Copies of a whole disk that are there at once
// do not have each other's.
int64 FindByNode(sqlite3* database, const NodeIdentity& file)
{
    if (file.birth == 0)
        return 0;
    Statement find(
        database, "SELECT id, path FROM files WHERE inode = ? AND birth = ? AND device IN (?, 0)");
    find.Bind(static_cast<int64>(file.inode)).Bind(file.birth).Bind(file.device);
    while (find.Next()) {
        NodeIdentity there;
        if (!IsAt(find.Bytes(1), file, &there) || there.mount == file.mount)
            return find.Number(0);
    }
    return 0;
}

// The end of the range of paths below one: "/" is the letter before "0".
std::string EndBelow(const std::string& path)
{
    return path + "0";
}

struct FileRow {
    int64 id;
    NodeIdentity file;
};

std::vector<FileRow> SomeRows(sqlite3* database)
{
    // Some by chance each time: to look at all would make opening slower with every file that the
    // store has ever seen, and in time all are reached.
    std::vector<FileRow> rows;
    Statement find(database,
        "SELECT id, path, inode, birth, device, program FROM files"
        " WHERE path IS NOT NULL ORDER BY random() LIMIT ?");
    find.Bind(kMostLookedAt);
    while (find.Next()) {
        FileRow row { find.Number(0), {} };
        row.file.path = find.Bytes(1);
        row.file.inode = static_cast<uint64>(find.Number(2));
        row.file.birth = find.Number(3);
        row.file.device = find.Number(4);
        row.file.isProgram = find.Number(5) != 0;
        rows.push_back(row);
    }
    return rows;
}

void LookAfter(sqlite3* database, const FileRow& row)
{
    NodeIdentity there;
    const status_t error = IdentifyNode(AT_FDCWD, row.file.path, &there);
    if (error != B_OK && error != B_ENTRY_NOT_FOUND && error != B_NOT_A_DIRECTORY)
        // No right to look, or a network that is away: neither says that the file is gone.
        return;
    const bool isThere =
        error == B_OK && (row.file.isProgram || there.IsSameNode(row.file.inode, row.file.birth));
    if (isThere) {
        Statement see(database,
            "UPDATE files SET replaced = NULL, device = ?"
            " WHERE id = ? AND (replaced IS NOT NULL OR device = 0)");
        see.Bind(there.device).Bind(row.id).Run();
        return;
    }
    const bool isDiskThere = row.file.device != 0 && DeviceOf(row.file.path) == row.file.device;
    Statement miss(
        database, "UPDATE files SET replaced = unixepoch() WHERE id = ? AND replaced IS NULL");
    miss.Bind(row.id).Run();
    Statement remove(
        database, "DELETE FROM files WHERE id = ? AND replaced < unixepoch() - 86400 * ?");
    remove.Bind(row.id).Bind(isDiskThere ? kMostDaysMissed : kMostDaysAway).Run();
}

} // namespace

int64 FindFile(sqlite3* database, const NodeIdentity& file)
{
    // The path first, as nearly all files stay where they are. Last a program made anew at its
    // path, which no node tells.
    int64 found = FindAtPath(database, file, false);
    if (found == 0)
        found = FindByNode(database, file);
    return found != 0 ? found : FindAtPath(database, file, true);
}

bool HasMoved(sqlite3* database, int64 row, const NodeIdentity& file)
{
    if (row == 0 || file.path.empty())
        return false;
    Statement find(database, "SELECT path, inode FROM files WHERE id = ?");
    find.Bind(row);
    if (!find.Next()
        || (find.Bytes(0) == file.path && find.Number(1) == static_cast<int64>(file.inode)))
        return false;
    NodeIdentity there;
    return find.Bytes(0) == file.path || !IsAt(find.Bytes(0), file, &there);
}

int64 ClaimFile(sqlite3* database, const NodeIdentity& file)
{
    if (file.path.empty())
        throw Failure { B_ENTRY_NOT_FOUND, false, "" };
    const int64 found = FindFile(database, file);
    // What was known at this path is another file: it may have been moved, and be found by its node
    // again.
    Statement free(database,
        "UPDATE files SET path = NULL, replaced = unixepoch() WHERE path = ? AND id <> ?");
    free.Bind(file.path).Bind(found).Run();
    // The number of an inode is given out again only when its file is gone: the times of birth tell
    // the two apart, where there are any.
    Statement reused(database,
        "DELETE FROM files WHERE inode = ? AND device = ? AND birth NOT IN (?, 0)"
        " AND program = 0 AND id <> ?");
    if (file.birth != 0)
        reused.Bind(static_cast<int64>(file.inode))
            .Bind(file.device)
            .Bind(file.birth)
            .Bind(found)
            .Run();
    Statement put(database,
        found == 0
            ? "INSERT INTO files (path, inode, birth, program, device) VALUES (?, ?, ?, ?, ?)"
            : "UPDATE files SET path = ?, inode = ?, birth = ?, program = ?, device = ?,"
              " replaced = NULL WHERE id = ?");
    put.Bind(file.path)
        .Bind(static_cast<int64>(file.inode))
        .Bind(file.birth)
        .Bind(static_cast<int64>(file.isProgram));
    put.Bind(file.device);
    if (found != 0)
        put.Bind(found);
    put.Run();
    return found != 0 ? found : sqlite3_last_insert_rowid(database);
}

void RemoveFile(sqlite3* database, const NodeIdentity& file)
{
    Statement(database, "DELETE FROM files WHERE id = ?").Bind(FindFile(database, file)).Run();
}

void MoveFiles(sqlite3* database, const std::string& from, const std::string& to)
{
    if (from == to)
        return;
    const std::string belowTo = to + "/";
    const std::string endBelowTo = EndBelow(to);
    // The renaming has replaced what was there.
    Statement clear(database, "DELETE FROM files WHERE path = ? OR (path > ? AND path < ?)");
    clear.Bind(to).Bind(belowTo).Bind(endBelowTo).Run();

    const std::string belowFrom = from + "/";
    const std::string endBelowFrom = EndBelow(from);
    // Paths are bytes in whatever coding; joining them makes a text, which is never equal to bytes.
    Statement move(database,
        "UPDATE files SET path = CAST(? || substr(path, ?) AS BLOB)"
        " WHERE path = ? OR (path > ? AND path < ?)");
    move.Bind(to).Bind(static_cast<int64>(from.size() + 1));
    move.Bind(from).Bind(belowFrom).Bind(endBelowFrom).Run();
}

void RemoveMissed(sqlite3* database)
{
    const std::vector<FileRow> rows = SomeRows(database);
    Transaction transaction(database, Transaction::Kind::kWriting);
    Statement remove(
        database, "DELETE FROM files WHERE path IS NULL AND replaced < unixepoch() - 86400 * ?");
    remove.Bind(kMostDaysMissed).Run();
    for (const FileRow& row : rows)
        LookAfter(database, row);
    transaction.Commit();
}

} // namespace store
