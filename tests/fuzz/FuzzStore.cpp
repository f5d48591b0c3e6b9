// The bytes are the file of the store of attributes and resources.
#include "store/Store.h"
#include "tests/fuzz/MemoryFolder.h"

#include <Errors.h>

#include <cstring>

namespace {

const NodeIdentity kFile = { "/nowhere/file", 17, 4711, 1, false };

void ReadAll(Store& store)
{
    int64 last = 0;
    std::string name;
    for (int count = 0; store.NextAttribute(kFile, &last, &name) == B_OK; count++) {
        Require(count < 1000, "attributes come to an end");
        attr_info info {};
        char value[64];
        if (store.GetAttribute(kFile, name, &info) == B_OK)
            Require(store.ReadAttribute(kFile, name, 0, value, sizeof value)
                    <= static_cast<ssize_t>(sizeof value),
                "no more is read than there is room for");
    }
    std::vector<StoredResource> resources;
    if (store.ListResources(kFile, &resources) != B_OK)
        return;
    for (const StoredResource& resource : resources) {
        std::vector<char> contents;
        static_cast<void>(store.ReadResource(kFile, resource.type, resource.id, &contents));
    }
}

// False where nothing can be written. What was written is there; or reading it has found the damage
// and set the store aside, and the next one keeps it.
bool WriteAndRead(Store& store, bool mayBeLost)
{
    char value[5] = {};
    if (store.WriteAttribute(kFile, "new", 'RAWT', 0, "value") != 5)
        return false;
    const bool isThere = store.ReadAttribute(kFile, "new", 0, value, sizeof value) == 5
        && memcmp(value, "value", 5) == 0;
    Require(isThere || mayBeLost, "what was written is there");
    ResourceChanges changes;
    changes.written = { { 'RAWT', 1, "name", "data" } };
    if (store.ChangeResources(kFile, changes) != B_OK)
        return false;
    std::vector<char> contents;
    const bool isResourceThere =
        store.ReadResource(kFile, 'RAWT', 1, &contents) == B_OK && contents.size() == 4;
    Require(isResourceThere || mayBeLost, "a resource that was written is there");
    return isThere && isResourceThere;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static FILE* const sQuiet = freopen("/dev/null", "w", stderr);
    static const MemoryFolder sFolder;
    const std::string folder = sFolder.Path() + "/store";
    std::filesystem::remove_all(folder); // with what was set aside
    sFolder.Write("store/file", std::string_view(reinterpret_cast<const char*>(data), size));
    Store store(folder + "/file");
    if (sQuiet)
        ReadAll(store);
    if (!WriteAndRead(store, true))
        static_cast<void>(WriteAndRead(store, true)); // finds the damage at the latest
    static_cast<void>(WriteAndRead(store, false));
    ReadAll(store);
    return 0;
}
