#include "Store.h"

#include "FileTable.h"
#include "KillGuard.h"
#include "LeafLock.h"
#include "Locations.h"
#include "StoreFile.h"

#include <cstdio>
#include <cstdlib>
#include <new>
#include <optional>
#include <unistd.h>

using namespace store;

namespace {

struct AttributeRow {
    int64 id = 0; // 0: there is none
    type_code type = 0;
    off_t size = 0;
};

AttributeRow FindAttribute(sqlite3* database, int64 file, std::string_view name)
{
    Statement find(
        database, "SELECT id, type, length(data) FROM attributes WHERE file = ? AND name = ?");
    find.Bind(file).Bind(name);
    if (!find.Next())
        return {};
    return { find.Number(0), static_cast<type_code>(find.Number(1)),
        static_cast<off_t>(find.Number(2)) };
}

void PutAttribute(
    sqlite3* database, int64 file, std::string_view name, type_code type, std::string_view bytes)
{
    Statement put(database,
        "INSERT INTO attributes (file, name, type, data) VALUES (?, ?, ?, ?) ON CONFLICT (file, "
        "name)"
        " DO UPDATE SET type = excluded.type, data = excluded.data");
    put.Bind(file).Bind(name).Bind(static_cast<int64>(type)).Bind(bytes).Run();
}

// Writes over and behind what the attribute has.
void ExtendAttribute(sqlite3* database, int64 file, std::string_view name, type_code type,
    size_t offset, std::string_view bytes)
{
    const AttributeRow row = FindAttribute(database, file, name);
    // In place where it fits: a block of a long value is written without reading the rest. The type
    // is set only if it is another, as that writes the whole row.
    if (row.id != 0 && offset + bytes.size() <= static_cast<size_t>(row.size)) {
        Statement retype(database, "UPDATE attributes SET type = ? WHERE id = ? AND type <> ?");
        retype.Bind(static_cast<int64>(type)).Bind(row.id).Bind(static_cast<int64>(type)).Run();
        Blob(database, "attributes", row.id, Blob::Use::kWriting)
            .Write(offset, bytes.data(), bytes.size());
        return;
    }
    std::string whole(offset + bytes.size(), '\0');
    if (row.id != 0) {
        const Blob old(database, "attributes", row.id, Blob::Use::kReading);
        old.Read(0, whole.data(), std::min(old.Size(), offset));
    }
    bytes.copy(whole.data() + offset, bytes.size());
    PutAttribute(database, file, name, type, whole);
}

} // namespace

Store& Store::Shared()
{
    // Never destroyed: threads may still use it while the process ends. Closed it must be, so that
    // the changes that wait beside the file come into it.
    static Store& sShared = *[] {
        std::atexit([] { Shared().Close(); });
        return new Store(SharedPath());
    }();
    return sShared;
}

std::string Store::SharedPath()
{
    return folders::Data() + "/tarvex/attributes.sqlite";
}

Store::Store(const std::string& path) : fPath(path) { }

Store::~Store()
{
    Close();
}

void Store::Close()
{
    const LeafLock lock(fLock);
    Forget();
}

void Store::Forget()
{
    // A forked process must leave its parent's file alone.
    if (fOpen && fOwner != getpid())
        static_cast<void>(fOpen.release());
    fOpen.reset();
}

void Store::Prepare(Access access)
{
    // Another program may have set the file aside, or a person removed it: what is open then is not
    // what others use.
    const uint64 inode = InodeOf(fPath);
    // One that cannot be written is told that nobody else does it: so it must not stay open.
    const bool isCurrent = fOpen && fOpen->inode == inode && fOwner == getpid() && fOpen->canWrite;
    if (isCurrent)
        return;
    Forget();
    if (inode == 0 && access != Access::kChange)
        throw Failure { B_ENTRY_NOT_FOUND, false, "" };
    const Opening opening = access == Access::kRead ? Opening::kForReading : Opening::kForWriting;
    fOpen = std::make_unique<OpenStore>(OpenStoreFile(fPath, opening));
    fOwner = getpid();
}

ssize_t Store::Run(Access access, const std::function<ssize_t(sqlite3*)>& action)
{
    CheckKilled();
    const LeafLock lock(fLock);
    try {
        Prepare(access);
        sqlite3* database = fOpen->database.get();
        const bool isReading = access == Access::kRead;
        // Readers need no turn: they wait for nobody and keep nobody waiting.
        std::optional<DirectoryLock> turn;
        if (!isReading)
            turn.emplace(fPath);
        Transaction transaction(
            database, isReading ? Transaction::Kind::kReading : Transaction::Kind::kWriting);
        turn.reset(); // for those who are to come next
        const ssize_t result = action(database);
        if (result >= 0)
            transaction.Commit();
        if (!isReading)
            fLastComplaint.clear();
        return result;
    } catch (const Failure& failure) {
        return Report(failure);
    } catch (const std::bad_alloc&) {
        return B_NO_MEMORY;
    }
}

ssize_t Store::Look(const NodeIdentity& file, const std::function<ssize_t(sqlite3*, int64)>& action)
{
    bool hasMoved = false;
    const ssize_t result = Run(Access::kRead, [&](sqlite3* database) -> ssize_t {
        const int64 row = FindFile(database, file);
        hasMoved = HasMoved(database, row, file);
        return action(database, row);
    });
    if (hasMoved) // or it would be missed at its old place
        static_cast<void>(Run(Access::kChangeExisting, [&](sqlite3* database) -> ssize_t {
            static_cast<void>(ClaimFile(database, file));
            return B_OK;
        }));
    return result;
}

// After the transaction's end: a damaged file can be closed.
ssize_t Store::Report(const Failure& failure)
{
    std::string reason = failure.reason;
    if (failure.isDamage && fOpen) {
        const uint64 inode = fOpen->inode;
        Forget();
        try {
            SetAside(fPath, inode, failure.reason);
            return B_IO_ERROR;
        } catch (const Failure& another) {
            reason = another.reason;
        }
    }
    // Said once: else a folder of a thousand files that are listed says it a thousand times.
    if (!reason.empty() && reason != fLastComplaint)
        fprintf(
            stderr, "Error using the attribute store <%s>: %s\n", fPath.c_str(), reason.c_str());
    if (!reason.empty())
        fLastComplaint = reason;
    return failure.status;
}

ssize_t Store::ReadAttribute(
    const NodeIdentity& file, std::string_view name, off_t offset, void* buffer, size_t length)
{
    return Look(file, [&](sqlite3* database, int64 owner) -> ssize_t {
        const AttributeRow row = FindAttribute(database, owner, name);
        if (row.id == 0)
            return B_ENTRY_NOT_FOUND;
        if (offset >= row.size)
            return 0;
        const size_t wanted = std::min(length, static_cast<size_t>(row.size - offset));
        Blob(database, "attributes", row.id, Blob::Use::kReading)
            .Read(static_cast<size_t>(offset), buffer, wanted);
        return static_cast<ssize_t>(wanted);
    });
}

ssize_t Store::WriteAttribute(const NodeIdentity& file, std::string_view name, type_code type,
    off_t offset, std::string_view bytes)
{
    return Run(Access::kChange, [&](sqlite3* database) -> ssize_t {
        if (bytes.size() > kMostStored || static_cast<size_t>(offset) > kMostStored - bytes.size())
            throw Failure { B_BAD_VALUE, false, "a value would have more than 1000000000 bytes" };
        const int64 row = ClaimFile(database, file);
        if (offset == 0)
            PutAttribute(database, row, name, type, bytes);
        else
            ExtendAttribute(database, row, name, type, static_cast<size_t>(offset), bytes);
        return static_cast<ssize_t>(bytes.size());
    });
}

status_t Store::RemoveAttribute(const NodeIdentity& file, std::string_view name)
{
    return status_t(Run(Access::kChangeExisting, [&](sqlite3* database) -> ssize_t {
        const AttributeRow row = FindAttribute(database, FindFile(database, file), name);
        Statement(database, "DELETE FROM attributes WHERE id = ?").Bind(row.id).Run();
        return row.id != 0 ? static_cast<status_t>(B_OK) : B_ENTRY_NOT_FOUND;
    }));
}

status_t Store::GetAttribute(const NodeIdentity& file, std::string_view name, attr_info* info)
{
    return status_t(Look(file, [&](sqlite3* database, int64 owner) -> ssize_t {
        const AttributeRow row = FindAttribute(database, owner, name);
        if (row.id == 0)
            return B_ENTRY_NOT_FOUND;
        *info = { row.type, row.size };
        return B_OK;
    }));
}

status_t Store::NextAttribute(const NodeIdentity& file, int64* last, std::string* name)
{
    return status_t(Look(file, [&](sqlite3* database, int64 owner) -> ssize_t {
        Statement find(database,
            // By id, not by place: what is added or removed between two calls makes none of the
            // others come twice or not at all.
            "SELECT id, name FROM attributes WHERE file = ? AND id > ? ORDER BY id LIMIT 1");
        find.Bind(owner).Bind(*last);
        if (!find.Next())
            return B_ENTRY_NOT_FOUND;
        *last = find.Number(0);
        *name = find.Bytes(1);
        return B_OK;
    }));
}

status_t Store::ListResources(const NodeIdentity& file, std::vector<StoredResource>* list)
{
    list->clear();
    const ssize_t result = Look(file, [&](sqlite3* database, int64 owner) -> ssize_t {
        Statement find(database,
            "SELECT type, number, name, length(data) FROM resources WHERE file = ? ORDER BY id");
        find.Bind(owner);
        while (find.Next())
            list->push_back(
                { static_cast<type_code>(find.Number(0)), static_cast<int32>(find.Number(1)),
                    find.Bytes(2), static_cast<size_t>(find.Number(3)) });
        return B_OK;
    });
    return result == B_ENTRY_NOT_FOUND ? B_OK
                                       : static_cast<status_t>(result); // there is no store yet
}

status_t Store::ReadResource(
    const NodeIdentity& file, type_code type, int32 id, std::vector<char>* data)
{
    return status_t(Look(file, [&](sqlite3* database, int64 owner) -> ssize_t {
        Statement find(
            database, "SELECT id FROM resources WHERE file = ? AND type = ? AND number = ?");
        find.Bind(owner).Bind(static_cast<int64>(type)).Bind(static_cast<int64>(id));
        if (!find.Next())
            return B_ENTRY_NOT_FOUND;
        const Blob blob(database, "resources", find.Number(0), Blob::Use::kReading);
        data->resize(blob.Size());
        blob.Read(0, data->data(), data->size());
        return B_OK;
    }));
}

status_t Store::ChangeResources(const NodeIdentity& file, const ResourceChanges& changes)
{
    return status_t(Run(Access::kChange, [&](sqlite3* database) -> ssize_t {
        const int64 row = ClaimFile(database, file);
        if (changes.removeAll)
            Statement(database, "DELETE FROM resources WHERE file = ?").Bind(row).Run();
        for (const auto& [type, id] : changes.removed) {
            Statement remove(
                database, "DELETE FROM resources WHERE file = ? AND type = ? AND number = ?");
            remove.Bind(row).Bind(static_cast<int64>(type)).Bind(static_cast<int64>(id)).Run();
        }
        for (const ResourceChanges::Written& written : changes.written) {
            Statement put(database,
                "INSERT INTO resources (file, type, number, name, data) VALUES (?, ?, ?, ?, ?)"
                " ON CONFLICT (file, type, number)"
                " DO UPDATE SET name = excluded.name, data = excluded.data");
            put.Bind(row)
                .Bind(static_cast<int64>(written.type))
                .Bind(static_cast<int64>(written.id));
            put.Bind(written.name).Bind(written.data).Run();
        }
        return B_OK;
    }));
}

void Store::Moved(const std::string& from, const std::string& to)
{
    // An error has been told, and the file has been moved all the same.
    static_cast<void>(Run(Access::kChangeExisting, [&](sqlite3* database) -> ssize_t {
        MoveFiles(database, from, to);
        return B_OK;
    }));
}

void Store::Removed(const NodeIdentity& file)
{
    static_cast<void>(Run(Access::kChangeExisting, [&](sqlite3* database) -> ssize_t {
        RemoveFile(database, file);
        return B_OK;
    }));
}
