#include "foundation/qResources.h"

#include "foundation/LibAppInfo.h"

#include <Bitmap.h>
#include <File.h>
#include <Message.h>
#include <TypeConstants.h>

#include <cstring>
#include <memory>

namespace {

constexpr type_code kBitmapType = 'BBMP';

} // namespace

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
