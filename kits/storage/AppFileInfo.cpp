#include "AppFileInfo.h"

#include "File.h"
#include "FileType.h"
#include "Locations.h"
#include "ReleaseVersion.h"
#include "SystemTree.h"

#include <cstring>
#include <sys/stat.h>

namespace {

constexpr type_code kVersionType = 'APPV';
constexpr const char* kVersionAttribute = "BEOS:APP_VERSION";
constexpr int kVersionKinds = 2;

bool IsReleaseFile(const BNode& node)
{
    struct stat mine = {};
    struct stat release = {};
    return node.GetStat(&mine) == B_OK && stat(kReleaseFile, &release) == 0
        && mine.st_dev == release.st_dev && mine.st_ino == release.st_ino;
}

bool IsEnded(const version_info& info)
{
    return memchr(info.short_info, '\0', sizeof info.short_info)
        && memchr(info.long_info, '\0', sizeof info.long_info);
}

// All kinds that the file has, in their order; the number of them, or an error.
ssize_t ReadVersions(const BNode& node, version_info (&versions)[kVersionKinds])
{
    const ssize_t size =
        node.ReadAttr(kVersionAttribute, kVersionType, 0, versions, sizeof versions);
    if (size < 0)
        return size;
    return size % static_cast<ssize_t>(sizeof(version_info)) == 0
        ? size / static_cast<ssize_t>(sizeof(version_info))
        : static_cast<ssize_t>(B_BAD_TYPE);
}

} // namespace

BAppFileInfo::BAppFileInfo(BFile* file)
{
    SetTo(file);
}

status_t BAppFileInfo::SetTo(BFile* file)
{
    return BNodeInfo::SetTo(file);
}

status_t BAppFileInfo::GetSignature(char* signature) const
{
    if (!signature)
        return B_BAD_VALUE;
    return Node() ? ReadTypeAttribute(*Node(), kSignatureAttribute, signature)
                  : static_cast<status_t>(B_NO_INIT);
}

status_t BAppFileInfo::SetSignature(const char* signature)
{
    return Node() ? WriteTypeAttribute(*Node(), kSignatureAttribute, signature)
                  : static_cast<status_t>(B_NO_INIT);
}

status_t BAppFileInfo::GetVersionInfo(version_info* info, version_kind kind) const
{
    if (!info || static_cast<int>(kind) < 0 || static_cast<int>(kind) >= kVersionKinds)
        return B_BAD_VALUE;
    if (!Node())
        return B_NO_INIT;
    version_info versions[kVersionKinds] = {};
    const ssize_t count = ReadVersions(*Node(), versions);
    if (count == B_ENTRY_NOT_FOUND && kind == B_APP_VERSION_KIND && IsReleaseFile(*Node())) {
        *info = VersionOfRelease(kernel::ReadText(kReleaseFile));
        return B_OK;
    }
    if (count <= kind)
        return count < 0 ? static_cast<status_t>(count) : B_ENTRY_NOT_FOUND;
    if (!IsEnded(versions[kind]))
        return B_BAD_TYPE;
    *info = versions[kind];
    return B_OK;
}

status_t BAppFileInfo::SetVersionInfo(const version_info* info, version_kind kind)
{
    if (static_cast<int>(kind) < 0 || static_cast<int>(kind) >= kVersionKinds
        || (info && !IsEnded(*info)))
        return B_BAD_VALUE;
    if (!Node())
        return B_NO_INIT;
    if (!info)
        return RemoveIfThere(*Node(), kVersionAttribute);
    version_info versions[kVersionKinds] = {};
    const ssize_t before = ReadVersions(*Node(), versions);
    if (before < 0 && before != B_ENTRY_NOT_FOUND && before != B_BAD_TYPE)
        return static_cast<status_t>(before); // the other kind would be lost
    versions[kind] = *info;
    const size_t count = static_cast<size_t>(before > kind ? before : kind + 1);
    const ssize_t written = Node()->WriteAttr(
        kVersionAttribute, kVersionType, 0, versions, count * sizeof(version_info));
    return written < 0 ? static_cast<status_t>(written) : B_OK;
}
