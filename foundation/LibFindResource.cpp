#include "foundation/LibFindResource.h"

#include <cstring>

#include <TypeConstants.h>

namespace {

// Copies the resource into value if it is as long as that.
template <typename T>
bool Find(BResources& resources, type_code type, int32 id, T& value)
{
    size_t size = 0;
    const void* data = resources.LoadResource(type, id, &size);
    if (data == nullptr || size != sizeof(value))
        return false;
    memcpy(&value, data, sizeof(value));
    return true;
}

} // namespace

bool LibFindStringResource(BResources& resources, const int32& id, char* text)
{
    size_t size = 0;
    const auto* data = static_cast<const char*>(resources.LoadResource(B_STRING_TYPE, id, &size));
    if (data == nullptr || text == nullptr)
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
