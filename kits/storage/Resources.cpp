#include "Resources.h"

#include "Locations.h"
#include "store/Store.h"

#include <algorithm>
#include <cstring>

// Each lies on the heap by itself: the address that LoadResource() gave out holds while others are
// added and removed.
struct BResources::Resource {
    type_code type = 0;
    int32 id = 0;
    std::string name;
    std::vector<char> data; // of size bytes if it isLoaded
    size_t size = 0;
    bool isLoaded = false;
    bool isChanged = false; // since the last Sync()
};

BResources::BResources() = default;

BResources::BResources(const BFile* file, bool clobber)
{
    SetTo(file, clobber);
}

BResources::~BResources()
{
    Unset();
}

status_t BResources::SetTo(const BFile* file, bool clobber)
{
    Unset();
    if (!file)
        return B_OK;
    NodeIdentity identity;
    status_t error = file->InitCheck() == B_OK ? static_cast<status_t>(B_OK) : B_BAD_VALUE;
    if (error == B_OK)
        error = IdentifyNode(file->Descriptor(), "", &identity);
    std::vector<StoredResource> list;
    if (error == B_OK && clobber && !file->IsWritable())
        error = B_NOT_ALLOWED;
    if (error == B_OK && !clobber)
        error = Store::Shared().ListResources(identity, &list);
    if (error != B_OK)
        return fStatus = error;
    // Names and sizes only. A value is read when it is asked for first: a help text with pictures
    // is large, and most calls want one of many.
    for (const StoredResource& stored : list)
        fResources.push_back(std::make_unique<Resource>(
            Resource { stored.type, stored.id, stored.name, {}, stored.size, false, false }));
    fFile = *file;
    fRemovedAll = clobber;
    return fStatus = B_OK;
}

void BResources::Unset()
{
    // Changes are kept also where nobody asks for it.
    if (fStatus == B_OK)
        Sync();
    fFile.Unset();
    fResources.clear();
    fRemoved.clear();
    fRemovedAll = false;
    fStatus = B_NO_INIT;
}

BResources::Resource* BResources::Find(type_code type, int32 id)
{
    const auto found = std::find_if(fResources.begin(), fResources.end(),
        [&](const auto& resource) { return resource->type == type && resource->id == id; });
    return found == fResources.end() ? nullptr : found->get();
}

BResources::Resource* BResources::Find(type_code type, const char* name)
{
    const auto found =
        std::find_if(fResources.begin(), fResources.end(), [&](const auto& resource) {
            return name && resource->type == type && resource->name == name;
        });
    return found == fResources.end() ? nullptr : found->get();
}

bool BResources::Load(Resource* resource)
{
    if (!resource || resource->isLoaded)
        return resource != nullptr;
    NodeIdentity file;
    if (IdentifyNode(fFile.Descriptor(), "", &file) != B_OK
        || Store::Shared().ReadResource(file, resource->type, resource->id, &resource->data)
            != B_OK)
        return false;
    resource->size = resource->data.size();
    return resource->isLoaded = true;
}

const void* BResources::Give(Resource* resource, size_t* size)
{
    if (!Load(resource))
        return nullptr;
    if (size)
        *size = resource->size;
    resource->data.reserve(1); // an empty one has an address too
    return resource->data.data();
}

const void* BResources::LoadResource(type_code type, int32 id, size_t* size)
{
    return Give(Find(type, id), size);
}

const void* BResources::LoadResource(type_code type, const char* name, size_t* size)
{
    return Give(Find(type, name), size);
}

bool BResources::HasResource(type_code type, int32 id)
{
    return Find(type, id) != nullptr;
}

bool BResources::HasResource(type_code type, const char* name)
{
    return Find(type, name) != nullptr;
}

bool BResources::Describe(const Resource* resource, int32* id, const char** name, size_t* size)
{
    if (!resource)
        return false;
    if (id)
        *id = resource->id;
    if (name)
        *name = resource->name.c_str();
    if (size)
        *size = resource->size;
    return true;
}

bool BResources::GetResourceInfo(type_code type, int32 id, const char** name, size_t* size)
{
    return Describe(Find(type, id), nullptr, name, size);
}

bool BResources::GetResourceInfo(type_code type, const char* name, int32* id, size_t* size)
{
    return Describe(Find(type, name), id, nullptr, size);
}

status_t BResources::CanChange() const
{
    if (fStatus != B_OK)
        return B_NO_INIT;
    return fFile.IsWritable() ? static_cast<status_t>(B_OK) : B_NOT_ALLOWED;
}

status_t BResources::AddResource(
    type_code type, int32 id, const void* data, size_t length, const char* name)
{
    if (const status_t error = CanChange(); error != B_OK)
        return error;
    if ((!data && length > 0) || length > kMostStored)
        return B_BAD_VALUE;
    Resource* resource = Find(type, id);
    if (!resource)
        resource = fResources.emplace_back(std::make_unique<Resource>()).get();
    const char* start = static_cast<const char*>(data);
    std::vector<char> bytes(start, start + length); // data may be the resource's own
    *resource = { type, id, name ? name : "", std::move(bytes), length, true, true };
    return B_OK;
}

status_t BResources::WriteResource(
    type_code type, int32 id, const void* data, off_t offset, size_t length)
{
    if (const status_t error = CanChange(); error != B_OK)
        return error;
    if (!data || offset < 0 || length > kMostStored
        || static_cast<size_t>(offset) > kMostStored - length)
        return B_BAD_VALUE;
    Resource* resource = Find(type, id);
    if (!resource)
        return B_ENTRY_NOT_FOUND;
    if (!Load(resource))
        return B_IO_ERROR;
    const size_t end = static_cast<size_t>(offset) + length;
    if (end > resource->data.size())
        resource->data.resize(end);
    memcpy(resource->data.data() + offset, data, length);
    resource->size = resource->data.size();
    resource->isChanged = true;
    return B_OK;
}

status_t BResources::RemoveResource(type_code type, int32 id)
{
    if (const status_t error = CanChange(); error != B_OK)
        return error;
    const auto removed = std::erase_if(fResources,
        [&](const auto& resource) { return resource->type == type && resource->id == id; });
    if (removed == 0)
        return B_ENTRY_NOT_FOUND;
    // Also one that was only just added: to remove what is not there does nothing in the store.
    fRemoved.emplace_back(type, id);
    return B_OK;
}

status_t BResources::Sync()
{
    if (fStatus != B_OK)
        return B_NO_INIT;
    // One transaction: whatever ends the program, the file has the old resources or the new ones.
    ResourceChanges changes;
    changes.removeAll = fRemovedAll;
    changes.removed = fRemoved;
    for (const auto& resource : fResources)
        if (resource->isChanged)
            changes.written.push_back({ resource->type, resource->id, resource->name,
                { resource->data.data(), resource->data.size() } });
    if (!changes.removeAll && changes.removed.empty() && changes.written.empty())
        return B_OK;
    NodeIdentity file;
    status_t error = IdentifyNode(fFile.Descriptor(), "", &file);
    if (error == B_OK)
        error = Store::Shared().ChangeResources(file, changes);
    if (error != B_OK)
        return error;
    for (const auto& resource : fResources)
        resource->isChanged = false;
    fRemoved.clear();
    fRemovedAll = false;
    return B_OK;
}
