#include "Sqlite.h"

#include "FileDescriptor.h"

#include <cstring>
#include <unistd.h>
#include <vector>

namespace store {
namespace {

// SQLite's own waiting takes longer steps each time, up to a tenth of a second.
int WaitForOthers(void*, int waits)
{
    usleep(kWaitMicroseconds);
    return waits < kMostWaits;
}

status_t StatusOf(int result, int systemError)
{
    // The lowest byte is the kind of error, those above it say more.
    switch (result & 0xff) {
        case SQLITE_FULL: return B_DEVICE_FULL;
        case SQLITE_READONLY: return B_READ_ONLY_DEVICE;
        case SQLITE_BUSY:
        case SQLITE_LOCKED: return B_BUSY;
        case SQLITE_NOMEM: return B_NO_MEMORY;
        case SQLITE_TOOBIG: return B_BAD_VALUE;
        case SQLITE_PERM:
        case SQLITE_AUTH: return B_PERMISSION_DENIED;
        case SQLITE_CANTOPEN: return systemError ? StatusOfErrno(systemError) : B_PERMISSION_DENIED;
        default: return B_IO_ERROR;
    }
}

[[noreturn]] void Throw(sqlite3* database, int result)
{
    const int systemError = database ? sqlite3_system_errno(database) : 0;
    Failure failure;
    failure.status = StatusOf(result, systemError);
    failure.isDamage = (result & 0xff) == SQLITE_CORRUPT || (result & 0xff) == SQLITE_NOTADB;
    failure.reason = database ? sqlite3_errmsg(database) : sqlite3_errstr(result);
    const bool isSystems = (result & 0xff) == SQLITE_CANTOPEN || (result & 0xff) == SQLITE_IOERR;
    if (systemError != 0 && isSystems)
        failure.reason += std::string(": ") + strerror(systemError);
    throw failure;
}

void CheckResult(sqlite3* database, int result)
{
    if (result != SQLITE_OK)
        Throw(database, result);
}

} // namespace

void CloseDatabase::operator()(sqlite3* database) const
{
    sqlite3_close_v2(database);
}

Database OpenDatabase(const std::string& name, int flags)
{
    sqlite3* opened = nullptr;
    // Every use is under the lock of its Store already.
    const int result = sqlite3_open_v2(name.c_str(), &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    // Owned before the result is looked at: after an error there is a handle too, and it knows the
    // reason.
    Database database(opened);
    CheckResult(opened, result);
    sqlite3_busy_handler(opened, WaitForOthers, nullptr);
    return database;
}

void ReadThrough(sqlite3* database)
{
    std::vector<char> part(1 << 16);
    for (const int kind : { SQLITE_FCNTL_FILE_POINTER, SQLITE_FCNTL_JOURNAL_POINTER }) {
        sqlite3_file* file = nullptr;
        sqlite3_int64 size = 0;
        CheckResult(database, sqlite3_file_control(database, "main", kind, &file));
        if (!file || !file->pMethods)
            continue; // it is not open
        if (const int result = file->pMethods->xFileSize(file, &size); result != SQLITE_OK)
            Throw(nullptr, result);
        for (sqlite3_int64 at = 0; at < size; at += static_cast<sqlite3_int64>(part.size())) {
            const int result =
                file->pMethods->xRead(file, part.data(), static_cast<int>(part.size()), at);
            // The last part is shorter than what is asked for, and told as an error.
            if (result != SQLITE_OK && result != SQLITE_IOERR_SHORT_READ)
                Throw(nullptr, result);
        }
    }
}

void Execute(sqlite3* database, const char* statements)
{
    CheckResult(database, sqlite3_exec(database, statements, nullptr, nullptr, nullptr));
}

Statement::Statement(sqlite3* database, const char* text) : fDatabase(database)
{
    Check(sqlite3_prepare_v2(database, text, -1, &fStatement, nullptr));
}

Statement::~Statement()
{
    sqlite3_finalize(fStatement);
}

void Statement::Check(int result)
{
    CheckResult(fDatabase, result);
}

Statement& Statement::Bind(int64 number)
{
    Check(sqlite3_bind_int64(fStatement, ++fBound, number));
    return *this;
}

Statement& Statement::Bind(std::string_view bytes)
{
    const char* start = bytes.empty() ? "" : bytes.data(); // NULL would be no value at all
    // Not copied, as all callers keep the bytes until the statement has run.
    Check(sqlite3_bind_blob64(fStatement, ++fBound, start, bytes.size(), SQLITE_STATIC));
    return *this;
}

bool Statement::Next()
{
    const int result = sqlite3_step(fStatement);
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        Throw(fDatabase, result);
    return result == SQLITE_ROW;
}

int64 Statement::Number(int column)
{
    return sqlite3_column_int64(fStatement, column);
}

std::string Statement::Bytes(int column)
{
    const void* start = sqlite3_column_blob(fStatement, column);
    const int size = sqlite3_column_bytes(fStatement, column);
    return start ? std::string(static_cast<const char*>(start), static_cast<size_t>(size)) : "";
}

Transaction::Transaction(sqlite3* database, Kind kind) : fDatabase(database)
{
    // A writer takes the file's lock at once: one that had read before could not get it any more
    // after another program wrote.
    Execute(database, kind == Kind::kWriting ? "BEGIN IMMEDIATE" : "BEGIN");
}

Transaction::~Transaction()
{
    if (fIsOpen)
        sqlite3_exec(fDatabase, "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::Commit()
{
    Execute(fDatabase, "COMMIT");
    fIsOpen = false;
}

Blob::Blob(sqlite3* database, const char* table, int64 row, Use use) : fDatabase(database)
{
    const int isWriting = use == Use::kWriting;
    CheckResult(
        database, sqlite3_blob_open(database, "main", table, "data", row, isWriting, &fBlob));
}

Blob::~Blob()
{
    sqlite3_blob_close(fBlob);
}

size_t Blob::Size() const
{
    return static_cast<size_t>(sqlite3_blob_bytes(fBlob));
}

void Blob::Read(size_t offset, void* buffer, size_t length) const
{
    // No value has more than 1000000000 bytes, so both fit.
    CheckResult(fDatabase,
        sqlite3_blob_read(fBlob, buffer, static_cast<int>(length), static_cast<int>(offset)));
}

void Blob::Write(size_t offset, const void* buffer, size_t length)
{
    CheckResult(fDatabase,
        sqlite3_blob_write(fBlob, buffer, static_cast<int>(length), static_cast<int>(offset)));
}

} // namespace store
