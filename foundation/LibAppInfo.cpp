#include "foundation/LibAppInfo.h"

#include "foundation/LibFiles.h"
#include "foundation/Utf8.h"

#include <AppFileInfo.h>
#include <Application.h>
#include <Message.h>
#include <Mime.h>
#include <Roster.h>

#include <cstdio>
#include <cstring>
#include <string_view>

namespace {

constexpr char kTypes[] = "types";

const char* VarietyName(uint32 variety)
{
    static constexpr const char* kNames[] = { " Dev", " Alpha", " Beta", " Gamma", " Gold" };
    return variety < std::size(kNames) ? kNames[variety] : "";
}

// Into a field of zeros, of which the rest stays: two equal versions are then equal byte for byte.
template <size_t size>
void Fill(char (&field)[size], const char* text)
{
    const std::string_view kept = LibCutUtf8(text ? text : "", size - 1);
    memcpy(field, kept.data(), kept.size());
}

} // namespace

bool LibOpenAppFile(const char* path, const uint32& openMode, BFile& file)
{
    if (path)
        return file.SetTo(path, openMode) == B_OK;
    app_info info;
    // Which file is the own one, only an application knows.
    return be_app && be_app->GetAppInfo(&info) == B_OK && file.SetTo(&info.ref, openMode) == B_OK;
}

LibString LibGetAppVersion(const char* path)
{
    LibString text("");
    BFile file;
    version_info version;
    if (!LibOpenAppFile(path, B_READ_ONLY, file)
        || BAppFileInfo(&file).GetVersionInfo(&version, B_APP_VERSION_KIND) != B_OK)
        return text;
    text.Formatted(
        "%u.%u.%u%s", version.major, version.middle, version.minor, VarietyName(version.variety));
    if (version.internal != 0) {
        LibString number;
        number.Formatted(" %u", version.internal);
        text.Concat(number);
    }
    return text;
}

bool LibSetAppVersion(const uint32& major, const uint32& middle, const uint32& minor,
    const char* shortInfo, const char* longInfo, const uint32& variety, const uint32& internal)
{
    version_info version = { major, middle, minor, variety, internal, "", "" };
    Fill(version.short_info, shortInfo);
    Fill(version.long_info, longInfo);
    BFile file;
    if (!LibOpenAppFile(nullptr, B_READ_WRITE, file))
        return false;
    BAppFileInfo info(&file);
    version_info recorded = {};
    // Every start records the version: mostly the disk is left in peace.
    if (info.GetVersionInfo(&recorded, B_APP_VERSION_KIND) == B_OK
        && memcmp(&recorded, &version, sizeof(version)) == 0)
        return true;
    return info.SetVersionInfo(&version, B_APP_VERSION_KIND) == B_OK;
}

bool LibGetAppSignature(const entry_ref& ref, char* signature)
{
    // A caller that does not look at the result reads an empty text, not what was there.
    signature[0] = '\0';
    char type[B_MIME_TYPE_LENGTH];
    BFile file;
    return LibGetMimeType(ref, type) && std::string_view(type) == B_APP_MIME_TYPE
        && file.SetTo(&ref, B_READ_ONLY) == B_OK
        && BAppFileInfo(&file).GetSignature(signature) == B_OK;
}

int32 LibGetAppSupportedTypes(LibStringList& types)
{
    BFile file;
    BMessage message;
    if (!LibOpenAppFile(nullptr, B_READ_ONLY, file)
        || BAppFileInfo(&file).GetSupportedTypes(&message) != B_OK)
        return 0;
    types.Append(message, kTypes);
    return types.Size();
}

bool LibSetAppSupportedTypes(LibStringList& types)
{
    BFile file;
    BMessage message;
    types.GetFrom(message, kTypes);
    return LibOpenAppFile(nullptr, B_READ_WRITE, file)
        && BAppFileInfo(&file).SetSupportedTypes(&message) == B_OK;
}
