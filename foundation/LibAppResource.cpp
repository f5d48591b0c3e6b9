#include "foundation/LibAppResource.h"

#include "foundation/LibAppInfo.h"
#include "foundation/LibFiles.h"
#include "foundation/LibPath.h"
#include "foundation/LibTools.h"

#include <Bitmap.h>
#include <Directory.h>
#include <File.h>
#include <FindDirectory.h>
#include <Message.h>
#include <TypeConstants.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

namespace {

constexpr size_t kChunk = 8192;
constexpr type_code kBitmapType = 'BBMP';

// Not looked for by the resource's name: unzip leaves control characters out of a file's.
bool OnlyEntry(const char* folder, BPath& path)
{
    BDirectory directory(folder);
    BEntry entry;
    return directory.CountEntries() == 1 && directory.GetNextEntry(&entry) == B_OK
        && entry.GetPath(&path) == B_OK;
}

// Copies the resource into value if it is as long as that.
template <typename T>
bool Find(BResources& resources, type_code type, int32 id, T& value)
{
    size_t size = 0;
    const void* data = resources.LoadResource(type, id, &size);
    if (!data || size != sizeof(value))
        return false;
    memcpy(&value, data, sizeof(value));
    return true;
}

} // namespace

LibAppResource::LibAppResource(const uint32& openMode)
{
    if (LibOpenAppFile(nullptr, openMode, file))
        SetTo(&file);
}

LibAppResource::LibAppResource(const char* path, const uint32& openMode)
{
    const BEntry entry(path, true);
    if (entry.InitCheck() == B_OK && file.SetTo(&entry, openMode) == B_OK)
        SetTo(&file);
}

bool LibAppResource::AddEntry(const char* path, const int32& id, const char* name, const int& level)
{
    BPath archive;
    if (find_directory(B_COMMON_TEMP_DIRECTORY, &archive, true) != B_OK)
        return false;
    archive.Append("zip_resource_file.zip");
    LibUnlink(archive.Path());
    // The tool would add to an archive that could not be removed, and may be another user's.
    BFile packed;
    bool added = false;
    if (BEntry(archive.Path()).Exists() || !LibZip(archive.Path(), BPath(path), level)
        || packed.SetTo(archive.Path(), B_READ_ONLY) != B_OK)
        fprintf(stderr, "%s failed\n", archive.Path());
    else
        added = AddArchive(packed, id, name ? name : BPath(path).Leaf());
    LibUnlink(archive.Path());
    return added;
}

bool LibAppResource::AddArchive(BFile& archive, int32 id, const char* name)
{
    RemoveResource(B_RAW_TYPE, id);
    // In pieces, so that no archive need fit into memory besides the resources that it is put
    // into.
    char chunk[kChunk];
    ssize_t length = archive.Read(chunk, sizeof(chunk));
    if (length < 0 || AddResource(B_RAW_TYPE, id, chunk, length, name) != B_OK)
        return false;
    off_t offset = length;
    while ((length = archive.Read(chunk, sizeof(chunk))) > 0) {
        if (WriteResource(B_RAW_TYPE, id, chunk, offset, length) != B_OK)
            return false;
        offset += length;
    }
    return length == 0;
}

bool LibAppResource::WriteArchive(int32 id, const char* path)
{
    size_t size = 0;
    const void* data = LoadResource(B_RAW_TYPE, id, &size);
    BFile archive(path, B_WRITE_ONLY | B_CREATE_FILE | B_FAIL_IF_EXISTS);
    if (archive.InitCheck() != B_OK) {
        fprintf(stderr, "Error initializine file in ExtractEntry\n");
        return false;
    }
    return archive.Write(data, size) == static_cast<ssize_t>(size);
}

bool LibAppResource::ExtractEntry(const int32& id, const char* path, bool unzip)
{
    if (!HasResource(B_RAW_TYPE, id))
        return true;
    const BPath goal(path); // before the working directory changes
    const TemporaryFolder folder;
    const BPath archive(folder.Path(), "zip");
    if (!WriteArchive(id, archive.Path()))
        return false;
    BPath result = archive;
    if (unzip
        && !(LibUnzipWhole(archive.Path()) && LibUnlink(archive.Path())
            && OnlyEntry(folder.Path(), result)))
        return false;
    return LibMove(result.Path(), goal.Path()) && Libmimeset(goal.Path());
}

char* LibAppResource::FindString(const int32& id)
{
    size_t size = 0;
    const auto* data = static_cast<const char*>(LoadResource(B_STRING_TYPE, id, &size));
    if (!data)
        return nullptr;
    // A resource may lack the end mark.
    const size_t length = strnlen(data, size);
    auto* text = new char[length + 1];
    memcpy(text, data, length);
    text[length] = '\0';
    return text;
}

bool LibAppResource::CopyResource(const int32& id, const uint32& type, LibAppResource& target)
{
    const char* name = nullptr;
    size_t size = 0;
    if (!GetResourceInfo(type, id, &name, &size))
        return true;
    const void* data = LoadResource(type, id, &size);
    if (!data)
        return true;
    // Copied first: the target may be this object itself.
    const std::string copy(static_cast<const char*>(data), size);
    const std::string copyName(name);
    target.RemoveResource(type, id);
    target.AddResource(type, id, copy.data(), copy.size(), copyName.c_str());
    return true;
}

bool LibFindStringResource(BResources& resources, const int32& id, char* text)
{
    size_t size = 0;
    const auto* data = static_cast<const char*>(resources.LoadResource(B_STRING_TYPE, id, &size));
    if (!data || !text)
        return false;
    const size_t length = strnlen(data, size);
    memcpy(text, data, length);
    text[length] = '\0';
    return true;
}

bool LibFindLongResource(BResources& resources, const int32& id, int32& value)
{
    return Find(resources, B_INT32_TYPE, id, value);
}

bool LibFindShortResource(BResources& resources, const int32& id, int8& value)
{
    return Find(resources, B_INT8_TYPE, id, value);
}

bool LibFindBoolResource(BResources& resources, const int32& id, bool& value)
{
    int8 byte = 0; // not a bool, which must not hold what the resource may
    if (!Find(resources, B_BOOL_TYPE, id, byte))
        return false;
    value = byte != 0;
    return true;
}

bool LibFindRGBResource(BResources& resources, const int32& id, rgb_color& color)
{
    uint8 parts[4];
    if (!Find(resources, B_RGB_COLOR_TYPE, id, parts))
        return false;
    color = { parts[0], parts[1], parts[2], parts[3] };
    return true;
}

bool LibFindRectResource(BResources& resources, const int32& id, BRect& rect)
{
    float sides[4];
    if (!Find(resources, B_RECT_TYPE, id, sides))
        return false;
    rect = BRect(sides[0], sides[1], sides[2], sides[3]);
    return true;
}

qResources::qResources(const uint32& openMode)
{
    BFile file;
    if (LibOpenAppFile(nullptr, openMode, file))
        SetTo(&file);
}

qResources::~qResources()
{
    Close();
}

LibString qResources::GetString(const char* name)
{
    size_t size = 0;
    const void* data = LoadResource(B_STRING_TYPE, name, &size);
    if (!data)
        return "";
    const std::string text(static_cast<const char*>(data), size); // it may lack its end mark
    return text.c_str();
}

bool qResources::HasString(const char* name)
{
    return HasResource(B_STRING_TYPE, name);
}

void qResources::SetString(const char* name, const char* text)
{
    if (!name || !text)
        return;
    int32 id = 0;
    size_t size = 0;
    // AddResource() replaces by number, whatever the name: a new text gets one that is free.
    if (!GetResourceInfo(B_STRING_TYPE, name, &id, &size)) {
        while (HasResource(B_STRING_TYPE, id))
            id++;
    }
    AddResource(B_STRING_TYPE, id, text, strlen(text) + 1, name);
}

BBitmap* qResources::GetBitmap(const char* name)
{
    size_t size = 0;
    const void* data = LoadResource(kBitmapType, name, &size);
    BMessage archive;
    if (!data
        || archive.Unflatten(static_cast<const char*>(data), static_cast<ssize_t>(size)) != B_OK)
        return nullptr;
    auto bitmap = std::make_unique<BBitmap>(&archive);
    // A damaged archive still makes a bitmap, but one without pixels.
    return bitmap->IsValid() ? bitmap.release() : nullptr;
}

int32 qResources::GetNextId(const uint32& type)
{
    int32 id = 0;
    while (!HasResource(type, id))
        id = id == INT32_MAX ? 0 : id + 1;
    return id;
}

void qResources::Close()
{
    Unset();
}
