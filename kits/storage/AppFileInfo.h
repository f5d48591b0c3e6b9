// What a program's file says about the program: signature, versions, the types it opens. Kept as
// attributes of the file.
#pragma once

#include "NodeInfo.h"

class BFile;
class BMessage;

struct version_info {
    uint32 major;
    uint32 middle;
    uint32 minor;
    uint32 variety; // 0 development, 1 alpha, 2 beta, 3 gamma, 4 golden, 5 final
    uint32 internal;
    char short_info[64];
    char long_info[256];
};

enum version_kind {
    B_APP_VERSION_KIND, // of the program itself
    B_SYSTEM_VERSION_KIND, // of what it belongs to
};

class BAppFileInfo : public BNodeInfo {
public:
    BAppFileInfo() = default; // B_NO_INIT
    BAppFileInfo(BFile* file); // as SetTo()

    // The file is not owned and must outlive the object or the next SetTo(). B_BAD_VALUE: NULL or
    // not open.
    status_t SetTo(BFile* file);

    // The get functions: B_ENTRY_NOT_FOUND: the file does not say; B_NO_INIT; B_BAD_VALUE: NULL;
    // B_BAD_TYPE: what is there is damaged. The result is then as it was. The set functions take a
    // NULL for "away with it"; errors as BNode::WriteAttr().

    // At most B_MIME_TYPE_LENGTH bytes; B_BAD_VALUE: a longer one.
    status_t GetSignature(char* signature) const;
    status_t SetSignature(const char* signature);

    // The release file of the distribution (which stands for the platform's file manager at
    // /system/Tracker) has the version of the distribution; its short text is the one people know
    // it by.
    status_t GetVersionInfo(version_info* info, version_kind kind) const;
    // Both texts must end within their arrays: B_BAD_VALUE.
    status_t SetVersionInfo(const version_info* info, version_kind kind);

    // The types as strings "types" of a message.
    status_t GetSupportedTypes(BMessage* types) const;
    status_t SetSupportedTypes(const BMessage* types);
};
