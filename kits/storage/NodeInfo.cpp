#include "NodeInfo.h"

#include "FileType.h"
#include "Node.h"

#include <cstring>

BNodeInfo::BNodeInfo(BNode* node)
{
    SetTo(node);
}

status_t BNodeInfo::SetTo(BNode* node)
{
    fNode = node && node->InitCheck() == B_OK ? node : nullptr;
    return fNode ? static_cast<status_t>(B_OK) : B_BAD_VALUE;
}

status_t BNodeInfo::GetType(char* type) const
{
    if (!type)
        return B_BAD_VALUE;
    if (!fNode)
        return B_NO_INIT;
    const status_t error = ReadTypeAttribute(*fNode, kTypeAttribute, type);
    // The last two of the store: it is not ours, or the disk has no room to open it.
    if (error != B_ENTRY_NOT_FOUND && error != B_PERMISSION_DENIED && error != B_DEVICE_FULL)
        return error;
    const std::string guess = GuessTypeOf(fNode->Descriptor());
    type[guess.copy(type, B_MIME_TYPE_LENGTH - 1)] = '\0';
    return B_OK;
}

status_t BNodeInfo::SetType(const char* type)
{
    return fNode ? WriteTypeAttribute(*fNode, kTypeAttribute, type)
                 : static_cast<status_t>(B_NO_INIT);
}
