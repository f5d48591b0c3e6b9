#include "TypeAttribute.h"

#include <cstring>

#include "TypeConstants.h"

status_t ReadTypeAttribute(const BNode& node, const char* name, char* type)
{
    char text[B_MIME_TYPE_LENGTH] = "";
    const ssize_t size = node.ReadAttr(name, B_MIME_STRING_TYPE, 0, text, sizeof text - 1);
    if (size < 0)
        return status_t(size);
    memcpy(type, text, sizeof text);
    return B_OK;
}

status_t WriteTypeAttribute(BNode& node, const char* name, const char* type)
{
    if (!type)
        return RemoveIfThere(node, name);
    const size_t size = strlen(type) + 1;
    if (size > size_t(B_MIME_TYPE_LENGTH))
        return B_BAD_VALUE;
    const ssize_t written = node.WriteAttr(name, B_MIME_STRING_TYPE, 0, type, size);
    return written < 0 ? status_t(written) : B_OK;
}

status_t RemoveIfThere(BNode& node, const char* name)
{
    const status_t error = node.RemoveAttr(name);
    return error == B_ENTRY_NOT_FOUND ? status_t(B_OK) : error;
}
