#include "Node.h"

#include "FileDescriptor.h"
#include "Locations.h"
#include "store/Store.h"

#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

// Whether a name can be that of an attribute.
status_t CheckName(const char* name)
{
    if (!name || !*name)
        return B_BAD_VALUE;
    return strlen(name) < static_cast<size_t>(B_ATTR_NAME_LENGTH) ? static_cast<status_t>(B_OK)
                                                                  : B_NAME_TOO_LONG;
}

constexpr int kHandle = O_PATH | O_NOFOLLOW | O_CLOEXEC; // needs no right to read the file

} // namespace

BNode::BNode(const char* path)
{
    SetTo(path);
}

BNode::BNode(const entry_ref* ref)
{
    SetTo(ref);
}

BNode::BNode(const BEntry* entry)
{
    SetTo(entry);
}

status_t BNode::InitCheck() const
{
    return fStatus;
}

status_t BNode::GetStat(struct stat* info) const
{
    if (!info)
        return B_BAD_VALUE;
    if (fStatus != B_OK)
        return B_NO_INIT;
    return fstat(Descriptor(), info) == 0 ? B_OK : StatusOfErrno();
}

time_t BNode::BirthTime() const
{
    NodeIdentity identity;
    const status_t error = IdentifyNode(Descriptor(), "", &identity);
    return error == B_OK ? static_cast<time_t>(identity.birth / 1'000'000'000) : 0;
}

status_t BNode::Take(int descriptor)
{
    // Read before the old descriptor is closed, which sets errno too.
    const status_t error = descriptor < 0 ? StatusOfErrno() : B_OK;
    fDescriptor = FileDescriptor(descriptor);
    fLastAttribute = 0;
    return fStatus = error;
}

status_t BNode::Fail(status_t error)
{
    Unset();
    return fStatus = error;
}

status_t BNode::SetTo(const char* path)
{
    return path && *path ? Take(open(LocalPath(path), kHandle)) : Fail(B_BAD_VALUE);
}

status_t BNode::SetTo(const entry_ref* ref)
{
    return SetTo(ref ? PathOfRef(*ref).c_str() : nullptr);
}

status_t BNode::SetTo(const BEntry* entry)
{
    if (!entry || entry->InitCheck() != B_OK)
        return Fail(B_BAD_VALUE);
    return Take(openat(entry->fDirectory.Get(), entry->fName.c_str(), kHandle));
}

void BNode::Unset()
{
    fDescriptor = FileDescriptor();
    fLastAttribute = 0;
    fStatus = B_NO_INIT;
}

status_t BNode::Identify(const char* name, NodeIdentity* file) const
{
    if (fStatus != B_OK)
        return B_NO_INIT;
    // Identified anew for each call: the file may have been renamed by any program since the last
    // one, and a stale path would name another file.
    const status_t error = CheckName(name);
    return error == B_OK ? IdentifyNode(Descriptor(), "", file) : error;
}

ssize_t BNode::ReadAttr(
    const char* name, type_code, off_t offset, void* buffer, size_t length) const
{
    NodeIdentity file;
    if (const status_t error = Identify(name, &file); error != B_OK)
        return error;
    if (!buffer || offset < 0)
        return B_BAD_VALUE;
    return Store::Shared().ReadAttribute(file, name, offset, buffer, length);
}

ssize_t BNode::WriteAttr(
    const char* name, type_code type, off_t offset, const void* buffer, size_t length)
{
    NodeIdentity file;
    if (const status_t error = Identify(name, &file); error != B_OK)
        return error;
    if ((!buffer && length > 0) || offset < 0)
        return B_BAD_VALUE;
    const std::string_view bytes(static_cast<const char*>(buffer), length);
    return Store::Shared().WriteAttribute(file, name, type, offset, bytes);
}

status_t BNode::RemoveAttr(const char* name)
{
    NodeIdentity file;
    const status_t error = Identify(name, &file);
    return error == B_OK ? Store::Shared().RemoveAttribute(file, name) : error;
}

status_t BNode::GetAttrInfo(const char* name, attr_info* info) const
{
    NodeIdentity file;
    if (const status_t error = Identify(name, &file); error != B_OK)
        return error;
    return info ? Store::Shared().GetAttribute(file, name, info)
                : static_cast<status_t>(B_BAD_VALUE);
}

status_t BNode::GetNextAttrName(char* buffer)
{
    NodeIdentity file;
    std::string name;
    // Any name would do: only the node is asked for.
    if (const status_t error = Identify("any", &file); error != B_OK)
        return error;
    if (!buffer)
        return B_BAD_VALUE;
    const status_t error = Store::Shared().NextAttribute(file, &fLastAttribute, &name);
    if (error == B_OK)
        buffer[name.copy(buffer, B_ATTR_NAME_LENGTH - 1)] = '\0';
    return error;
}
