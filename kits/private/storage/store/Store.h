// The user's store: attributes and resources of any file, in one file of its own. Every change is
// whole or not at all, whatever ends the program; several programs may use it at once. Where it
// cannot be used the calls return the error after a line on standard error, one for each cause, and
// the next call tries again.
//
// Any thread may call. The start of a call is a kill point and nothing else in it: the locks that
// it takes, of this object and of the file, are others' too.
#pragma once

#include "fs_attr.h"
#include "Locations.h"
#include "Mutex.h"

#include <functional>
#include <memory>
#include <vector>

struct sqlite3;

namespace store {
struct Failure;
struct OpenStore;
} // namespace store

inline constexpr size_t kMostStored = 1'000'000'000; // bytes of a value: SQLite's own limit

struct StoredResource {
    type_code type = 0;
    int32 id = 0;
    std::string name;
    size_t size = 0;
};

struct ResourceChanges {
    bool removeAll = false; // before the others
    std::vector<std::pair<type_code, int32>> removed;
    struct Written {
        type_code type;
        int32 id;
        std::string_view name;
        std::string_view data;
    };
    std::vector<Written> written; // in place of those of the same type and id
};

class Store {
public:
    // That of the user: tarvex/attributes.sqlite in the data folder. Made by the first change.
    static Store& Shared();
    static std::string SharedPath();

    explicit Store(const std::string& path); // whether it exists or not
    ~Store();
    Store(const Store&) = delete;
    Store& operator=(const Store&) = delete;

    // Contracts and errors as those of BNode.
    ssize_t ReadAttribute(const NodeIdentity& file, std::string_view name, off_t offset,
        void* buffer, size_t length) EXCLUDES(fLock);
    ssize_t WriteAttribute(const NodeIdentity& file, std::string_view name, type_code type,
        off_t offset, std::string_view bytes) EXCLUDES(fLock);
    status_t RemoveAttribute(const NodeIdentity& file, std::string_view name) EXCLUDES(fLock);
    status_t GetAttribute(const NodeIdentity& file, std::string_view name, attr_info* info)
        EXCLUDES(fLock);
    // The attribute behind the one with the number *last (0: the first), which is then its number.
    status_t NextAttribute(const NodeIdentity& file, int64* last, std::string* name)
        EXCLUDES(fLock);

    // A file without any is no error. The list is in the order in which they were added.
    status_t ListResources(const NodeIdentity& file, std::vector<StoredResource>* list)
        EXCLUDES(fLock);
    status_t ReadResource(const NodeIdentity& file, type_code type, int32 id,
        std::vector<char>* data) EXCLUDES(fLock);
    status_t ChangeResources(const NodeIdentity& file, const ResourceChanges& changes)
        EXCLUDES(fLock);

    // What happened to files, by their real paths. No store is made for it.
    void Moved(const std::string& from, const std::string& to) EXCLUDES(fLock);
    void Removed(const NodeIdentity& file) EXCLUDES(fLock);

    void Close() EXCLUDES(fLock); // until the next use

private:
    enum class Access { kRead, kChange, kChangeExisting };

    ssize_t Run(Access access, const std::function<ssize_t(sqlite3*)>& action) EXCLUDES(fLock);
    // Reads, with the file's row, 0 where it has none.
    ssize_t Look(const NodeIdentity& file, const std::function<ssize_t(sqlite3*, int64)>& action)
        EXCLUDES(fLock);
    void Prepare(Access access) REQUIRES(fLock);
    ssize_t Report(const store::Failure& failure) REQUIRES(fLock);
    void Forget() REQUIRES(fLock);

    const std::string fPath;
    Mutex fLock;
    std::unique_ptr<store::OpenStore> fOpen GUARDED_BY(fLock);
    pid_t fOwner GUARDED_BY(fLock) = 0; // the process that opened it
    std::string fLastComplaint GUARDED_BY(fLock);
};
