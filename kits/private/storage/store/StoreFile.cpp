#include "StoreFile.h"

#include "Directory.h"
#include "FileDescriptor.h"
#include "FileTable.h"
#include "Locations.h"
#include "Sqlite.h"
#include "TextCoding.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <span>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace store {

void ThrowErrno(const std::string& what)
{
    // Kept: to put the text together may change it.
    const int error = errno;
    throw Failure { StatusOfErrno(error), false, what + ": " + strerror(error) };
}

DirectoryLock::DirectoryLock(const std::string& path)
    : fDirectory(open(SplitPath(path).directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    if (!fDirectory.IsOpen())
        ThrowErrno("its folder cannot be opened");
    for (int tries = 0; flock(fDirectory.Get(), LOCK_EX | LOCK_NB) != 0; tries++) {
        if (tries == kMostWaits)
            throw Failure { B_BUSY, false, "another program has kept it for too long" };
        usleep(kWaitMicroseconds);
    }
}

namespace {

constexpr int64 kApplicationId = 'TVXS';

// What brings the store from each version to the next, the first from nothing to version 1. A step
// that has been released is never changed.
constexpr const char* kSteps[] = {
    "CREATE TABLE files (id INTEGER PRIMARY KEY, path BLOB UNIQUE, inode INTEGER NOT NULL,"
    " birth INTEGER NOT NULL, program INTEGER NOT NULL, replaced INTEGER);"
    "CREATE INDEX files_by_node ON files (inode, birth);"
    "CREATE TABLE attributes (id INTEGER PRIMARY KEY,"
    " file INTEGER NOT NULL REFERENCES files ON DELETE CASCADE, name BLOB NOT NULL,"
    " type INTEGER NOT NULL, data BLOB NOT NULL, UNIQUE (file, name));",

    "CREATE TABLE resources (id INTEGER PRIMARY KEY,"
    " file INTEGER NOT NULL REFERENCES files ON DELETE CASCADE, type INTEGER NOT NULL,"
    " number INTEGER NOT NULL, name BLOB NOT NULL, data BLOB NOT NULL,"
    " UNIQUE (file, type, number));",

    "ALTER TABLE files ADD COLUMN device INTEGER NOT NULL DEFAULT 0",
};
constexpr int64 kVersion = std::size(kSteps);

int64 Ask(sqlite3* database, const char* question)
{
    Statement statement(database, question);
    return statement.Next() ? statement.Number(0) : 0;
}

void Upgrade(sqlite3* database, int64 from)
{
    Transaction transaction(database, Transaction::Kind::kWriting);
    for (const char* step : std::span(kSteps).subspan(static_cast<size_t>(from)))
        Execute(database, step);
    Execute(database, ("PRAGMA user_version = " + std::to_string(kVersion)).c_str());
    Execute(database, ("PRAGMA application_id = " + std::to_string(kApplicationId)).c_str());
    transaction.Commit();
}

bool IsEmpty(sqlite3* database)
{
    return Ask(database, "SELECT count(*) FROM sqlite_schema") == 0;
}

bool IsOfAnother(sqlite3* database)
{
    return !IsEmpty(database) && Ask(database, "PRAGMA application_id") != kApplicationId;
}

// Columns, indexes and references, as SQLite understands them.
std::string StructureOf(sqlite3* database)
{
    std::string structure;
    for (const char* question :
        { "SELECT m.name || t.name || t.type || t.\"notnull\" || t.pk FROM sqlite_schema m,"
          " pragma_table_info(m.name) t WHERE m.type = 'table' ORDER BY m.name, t.cid",
            "SELECT m.name || i.\"unique\" || c.name FROM sqlite_schema m, "
            "pragma_index_list(m.name) i,"
            " pragma_index_info(i.name) c WHERE m.type = 'table' ORDER BY m.name, i.name, c.seqno",
            "SELECT m.name || f.\"table\" || f.\"from\" || f.on_delete FROM sqlite_schema m,"
            " pragma_foreign_key_list(m.name) f WHERE m.type = 'table' ORDER BY m.name" }) {
        Statement statement(database, question);
        while (statement.Next())
            structure += statement.Bytes(0) + "\n";
    }
    return structure;
}

std::string StructureOfVersion(int64 version)
{
    const Database made = OpenDatabase(":memory:", SQLITE_OPEN_READWRITE);
    for (const char* step : std::span(kSteps).first(static_cast<size_t>(version)))
        Execute(made.get(), step);
    return StructureOf(made.get());
}

// Whether version and tables fit each other. The definitions are text, and with a letter of it
// damaged they may mean something else: what is written then is not found again.
bool HasOwnStructure(sqlite3* database)
{
    static const std::string sUsual = StructureOfVersion(kVersion);
    const int64 version = Ask(database, "PRAGMA user_version");
    if (version < 0 || version > kVersion || (version == 0) != IsEmpty(database))
        return false;
    return StructureOf(database) == (version == kVersion ? sUsual : StructureOfVersion(version));
}

void CheckVersion(sqlite3* database)
{
    const int64 version = Ask(database, "PRAGMA user_version");
    const bool isEmpty = IsEmpty(database);
    if (IsOfAnother(database))
        throw Failure { B_IO_ERROR, true, "it is of another program" };
    if (version > kVersion)
        throw Failure { B_UNSUPPORTED, false,
            "it is of version " + std::to_string(version) + ", this program knows "
                + std::to_string(kVersion) };
    if (!HasOwnStructure(database))
        throw Failure { B_IO_ERROR, true, "its tables are others" };
    if (isEmpty)
        Ask(database, "PRAGMA journal_mode = WAL");
    if (version < kVersion)
        Upgrade(database, version);
}

OpenStore OpenNormally(const std::string& path, Opening opening)
{
    const int create = opening == Opening::kForWriting ? SQLITE_OPEN_CREATE : 0;
    OpenStore result;
    result.database = OpenDatabase(path, SQLITE_OPEN_READWRITE | create);
    sqlite3* database = result.database.get();
    Execute(database, "PRAGMA foreign_keys = ON");
    Ask(database, "PRAGMA journal_size_limit = 4194304");
    CheckVersion(database);
    if (opening == Opening::kForWriting)
        RemoveMissed(database);
    result.inode = InodeOf(path);
    return result;
}

// SQLite needs to write beside a file even to read it, unless it is told that nobody changes it.
// That is only right if no changes wait beside it.
OpenStore OpenUnchanged(const std::string& path, const Failure& why)
{
    struct stat log = {};
    if (stat((path + "-wal").c_str(), &log) == 0 && log.st_size > 0)
        throw why;
    OpenStore result;
    result.database = OpenDatabase(
        "file:" + PercentEncoded(path) + "?immutable=1", SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
    CheckVersion(result.database.get());
    result.inode = InodeOf(path);
    result.canWrite = false;
    return result;
}

OpenStore OpenAnyWay(const std::string& path, Opening opening)
{
    try {
        return OpenNormally(path, opening);
    } catch (const Failure& failure) {
        const bool hasNoRight =
            failure.status == B_PERMISSION_DENIED || failure.status == B_READ_ONLY_DEVICE;
        if (opening == Opening::kForWriting || failure.isDamage || !hasNoRight)
            throw;
        return OpenUnchanged(path, failure);
    }
}

std::string NameAside(const std::string& path)
{
    const time_t now = time(nullptr);
    tm local = {};
    char suffix[40] = "";
    if (localtime_r(&now, &local))
        strftime(suffix, sizeof suffix, ".damaged-%Y%m%d-%H%M%S", &local);
    std::string name = path + suffix;
    for (int number = 2; access(name.c_str(), F_OK) == 0; number++)
        name = path + suffix + "-" + std::to_string(number);
    return name;
}

bool IsSound(sqlite3* database)
{
    try {
        Statement check(database, "PRAGMA integrity_check(1)");
        return !IsOfAnother(database) && check.Next() && check.Bytes(0) == "ok"
            && HasOwnStructure(database);
    } catch (const Failure& failure) {
        if (!failure.isDamage)
            throw;
        return false;
    }
}

// SQLite calls a file damaged also if the system could not read it. So all of it must be readable,
// and be found damaged twice.
bool IsDamaged(const std::string& path)
{
    for (int tries = 0; tries < 2; tries++) {
        const Database database = OpenDatabase(path, SQLITE_OPEN_READWRITE);
        if (IsSound(database.get()))
            return false;
        ReadThrough(database.get());
    }
    return true;
}

// Under the DirectoryLock. Throws Failure if it is not damaged.
void RenameAside(const std::string& path, uint64 inode, const std::string& reason)
{
    if (InodeOf(path) != inode || inode == 0)
        return; // another program did it
    if (!IsDamaged(path))
        throw Failure { B_IO_ERROR, false, "a part of it could not be read (" + reason + ")" };
    const std::string aside = NameAside(path);
    if (rename(path.c_str(), aside.c_str()) != 0)
        ThrowErrno("it is damaged (" + reason + ") and cannot be set aside");
    for (const char* companion : { "-wal", "-shm" })
        rename((path + companion).c_str(), (aside + companion).c_str());
    fprintf(stderr, "The attribute store <%s> is damaged (%s) and has been set aside as <%s>\n",
        path.c_str(), reason.c_str(), aside.c_str());
}

} // namespace

uint64 InodeOf(const std::string& path)
{
    struct stat info = {};
    if (stat(path.c_str(), &info) == 0)
        return info.st_ino;
    if (errno != ENOENT && errno != ENOTDIR)
        ThrowErrno("it cannot be looked at");
    return 0;
}

OpenStore OpenStoreFile(const std::string& path, Opening opening)
{
    const std::string directory = SplitPath(path).directory;
    if (opening == Opening::kForWriting) {
        const status_t error = create_directory(directory.c_str(), 0700);
        if (error != B_OK)
            throw Failure { error, false, "its folder cannot be made" };
    }
    const DirectoryLock lock(path);
    const uint64 inode = InodeOf(path);
    try {
        return OpenAnyWay(path, opening);
    } catch (const Failure& failure) {
        if (!failure.isDamage)
            throw;
        RenameAside(path, inode, failure.reason);
    }
    if (opening == Opening::kForReading)
        throw Failure { B_IO_ERROR, false, "" };
    return OpenNormally(path, opening);
}

void SetAside(const std::string& path, uint64 inode, const std::string& reason)
{
    const DirectoryLock lock(path);
    RenameAside(path, inode, reason);
}

} // namespace store
