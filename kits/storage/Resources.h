// The resources of a file: data under a type and a number, with a name. They are read when the
// object is attached, changed in memory, and kept by Sync() or when the object ends or is attached
// to another file. Kept in the user's store like attributes: all changes or none.
#pragma once

#include "File.h"

#include <memory>
#include <vector>

class BResources {
public:
    BResources(); // unattached: nothing is found, nothing can be added
    BResources(const BFile* file, bool clobber = false); // as SetTo()
    BResources(const BResources&) = delete;
    BResources& operator=(const BResources&) = delete;
    virtual ~BResources();

    // Attaches to a copy of file, NULL for none; with clobber all resources are taken away first.
    // B_BAD_VALUE: the file is not open; else as BNode::ReadAttr(). Unattached on any error.
    status_t SetTo(const BFile* file, bool clobber = false);
    void Unset(); // after a Sync()

    // The data, its length in *size; NULL, and *size as it was, if there is no such resource. Owned
    // by the object, good until that resource is changed or removed or the object ends. A name is
    // that of the first resource that has it.
    const void* LoadResource(type_code type, int32 id, size_t* size);
    const void* LoadResource(type_code type, const char* name, size_t* size);

    bool HasResource(type_code type, int32 id);
    bool HasResource(type_code type, const char* name);

    // Describe a resource that is known in part. False, and nothing changed, if there is none. A
    // name is good as long as the resource.
    bool GetResourceInfo(type_code type, int32 id, const char** name, size_t* size);
    bool GetResourceInfo(type_code type, const char* name, int32* id, size_t* size);

    // The change functions: B_NO_INIT: unattached; B_NOT_ALLOWED: the file was not opened for
    // writing; B_BAD_VALUE: data is NULL with a length, a negative offset, or too long.

    // Adds a resource, in place of one of the same type and number. A NULL name is "".
    status_t AddResource(
        type_code type, int32 id, const void* data, size_t length, const char* name = nullptr);
    // Writes over and behind the data. B_ENTRY_NOT_FOUND: no such resource.
    status_t WriteResource(type_code type, int32 id, const void* data, off_t offset, size_t length);
    // B_ENTRY_NOT_FOUND: no such resource.
    status_t RemoveResource(type_code type, int32 id);

    // Writes the changes. B_NO_INIT; else as BNode::WriteAttr(), and they are still to be written.
    status_t Sync();

private:
    struct Resource;

    Resource* Find(type_code type, int32 id);
    Resource* Find(type_code type, const char* name);
    bool Load(Resource* resource);
    const void* Give(Resource* resource, size_t* size);
    static bool Describe(const Resource* resource, int32* id, const char** name, size_t* size);
    status_t CanChange() const;

    status_t fStatus = B_NO_INIT;
    BFile fFile;
    std::vector<std::unique_ptr<Resource>> fResources; // in the order in which they were added
    std::vector<std::pair<type_code, int32>> fRemoved; // since the last Sync()
    bool fRemovedAll = false;
};
