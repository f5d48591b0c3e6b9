// The types that a program opens, as a message: the storage kit knows none.
#include "AppFileInfo.h"
#include "File.h"
#include "FileType.h"
#include "Message.h"

#include <vector>

namespace {

constexpr const char* kTypesAttribute = "BEOS:FILE_TYPES";

} // namespace

status_t BAppFileInfo::GetSupportedTypes(BMessage* types) const
{
    if (!types)
        return B_BAD_VALUE;
    if (!Node())
        return B_NO_INIT;
    std::vector<char> flat;
    ssize_t size = 0;
    while (size
        == static_cast<ssize_t>(flat.size())) { // or another program has made it longer in between
        attr_info info;
        if (const status_t error = Node()->GetAttrInfo(kTypesAttribute, &info); error != B_OK)
            return error;
        flat.resize(static_cast<size_t>(info.size) + 1);
        size = Node()->ReadAttr(kTypesAttribute, B_MESSAGE_TYPE, 0, flat.data(), flat.size());
        if (size < 0)
            return static_cast<status_t>(size);
    }
    BMessage read;
    if (read.Unflatten(flat.data(), size) != B_OK)
        return B_BAD_TYPE;
    *types = read;
    return B_OK;
}

status_t BAppFileInfo::SetSupportedTypes(const BMessage* types)
{
    if (!Node())
        return B_NO_INIT;
    if (!types)
        return RemoveIfThere(*Node(), kTypesAttribute);
    std::vector<char> flat(static_cast<size_t>(types->FlattenedSize()));
    if (const status_t error = types->Flatten(flat.data(), static_cast<ssize_t>(flat.size()));
        error != B_OK)
        return error;
    const ssize_t written =
        Node()->WriteAttr(kTypesAttribute, B_MESSAGE_TYPE, 0, flat.data(), flat.size());
    return written < 0 ? static_cast<status_t>(written) : B_OK;
}
