#include "FileTable.h"

namespace store {
namespace {

int64 FindByNode(sqlite3* database, const NodeIdentity& file)
{
    if (file.birth == 0)
        return 0;
    Statement find(database, "SELECT id FROM files WHERE inode = ? AND birth = ?");
    find.Bind(int64(file.inode)).Bind(file.birth);
    return find.Next() ? find.Number(0) : 0;
}

int64 FindByPath(sqlite3* database, const NodeIdentity& file)
{
    Statement find(database, "SELECT id, inode, birth, program FROM files WHERE path = ?");
    find.Bind(file.path);
    if (!find.Next())
        return 0;
    const bool bothPrograms = find.Number(3) != 0 && file.isProgram;
    const bool isSame =
        find.Number(1) == int64(file.inode) && (find.Number(2) == 0 || file.birth == 0);
    return bothPrograms || isSame ? find.Number(0) : 0;
}

// The end of the range of paths below one: "/" is the letter before "0".
std::string EndBelow(const std::string& path)
{
    return path + "0";
}

} // namespace

int64 FindFile(sqlite3* database, const NodeIdentity& file)
{
    const int64 found = FindByNode(database, file);
    return found != 0 ? found : FindByPath(database, file);
}

int64 ClaimFile(sqlite3* database, const NodeIdentity& file)
{
    if (file.path.empty())
        throw Failure { B_ENTRY_NOT_FOUND, false, "" };
    const int64 found = FindFile(database, file);
    Statement free(database,
        "UPDATE files SET path = NULL, replaced = unixepoch() WHERE path = ? AND id <> ?");
    free.Bind(file.path).Bind(found).Run();
    Statement put(database,
        found == 0 ? "INSERT INTO files (path, inode, birth, program) VALUES (?, ?, ?, ?)"
                   : "UPDATE files SET path = ?, inode = ?, birth = ?, program = ?, replaced = NULL"
                     " WHERE id = ?");
    put.Bind(file.path).Bind(int64(file.inode)).Bind(file.birth).Bind(int64(file.isProgram));
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
    Statement clear(database, "DELETE FROM files WHERE path = ? OR (path > ? AND path < ?)");
    clear.Bind(to).Bind(belowTo).Bind(endBelowTo).Run();

    const std::string belowFrom = from + "/";
    const std::string endBelowFrom = EndBelow(from);
    Statement move(database,
        "UPDATE files SET path = CAST(? || substr(path, ?) AS BLOB)"
        " WHERE path = ? OR (path > ? AND path < ?)");
    move.Bind(to).Bind(int64(from.size() + 1));
    move.Bind(from).Bind(belowFrom).Bind(endBelowFrom).Run();
}

void RemoveLongReplaced(sqlite3* database)
{
    Statement remove(
        database, "DELETE FROM files WHERE path IS NULL AND replaced < unixepoch() - 86400 * ?");
    remove.Bind(int64(kMostDaysReplaced)).Run();
}

} // namespace store
