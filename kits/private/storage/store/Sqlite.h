// What this folder uses of SQLite, as objects that give back what they took. Errors are thrown as
// Failure, and caught where the folder ends: in Store.
#pragma once

#include "SupportDefs.h"

#include <sqlite3.h>

#include <memory>
#include <string>
#include <string_view>

namespace store {

// How long other programs are waited for: ten seconds.
constexpr int kMostWaits = 10'000;
constexpr unsigned kWaitMicroseconds = 1000;

// Why something could not be done.
struct Failure {
    status_t status = B_IO_ERROR;
    bool isDamage = false; // the file itself is broken
    std::string reason; // for people
};

struct CloseDatabase {
    void operator()(sqlite3* database) const;
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;

// Everything that is done with it waits for other programs.
[[nodiscard]] Database OpenDatabase(const std::string& name, int flags);
// Throws Failure, B_IO_ERROR, if the system cannot read all of the database's files.
void ReadThrough(sqlite3* database);
// Runs statements that have no result.
void Execute(sqlite3* database, const char* statements);

// One statement. Values are bound in the order of its question marks; bytes are not copied, they
// must outlive it. What a row gives is good until the next one.
class Statement {
public:
    Statement(sqlite3* database, const char* text);
    ~Statement();
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    Statement& Bind(int64 number);
    Statement& Bind(std::string_view bytes); // as a blob: paths and names are any bytes
    bool Next(); // goes to the next row, the first one at first; false behind the last
    void Run()
    {
        while (Next()) { }
    }

    int64 Number(int column);
    std::string Bytes(int column);

private:
    void Check(int result);

    sqlite3* fDatabase;
    sqlite3_stmt* fStatement = nullptr;
    int fBound = 0;
};

// All or nothing: what was done since the constructor is undone unless Commit() came back.
class Transaction {
public:
    enum class Kind { kReading, kWriting };
    Transaction(sqlite3* database, Kind kind);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void Commit();

private:
    sqlite3* fDatabase;
    bool fIsOpen = true;
};

// The value of a row's column "data", without the rest of it being loaded.
class Blob {
public:
    enum class Use { kReading, kWriting };
    Blob(sqlite3* database, const char* table, int64 row, Use use);
    ~Blob();
    Blob(const Blob&) = delete;
    Blob& operator=(const Blob&) = delete;

    size_t Size() const; // which writing cannot change
    void Read(size_t offset, void* buffer, size_t length) const; // within the size
    void Write(size_t offset, const void* buffer, size_t length);

private:
    sqlite3* fDatabase;
    sqlite3_blob* fBlob = nullptr;
};

} // namespace store
