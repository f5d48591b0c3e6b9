// The typed faces of BMessage's data: what a value of each type looks like as bytes.
#include "Entry.h"
#include "Message.h"

#include <cstring>
#include <new>
#include <vector>

namespace {

// Copies a value out of the message; data of another size is damaged.
template <typename Value>
status_t FindValue(
    const BMessage& message, const char* name, type_code type, int32 index, Value* value)
{
    const void* data = nullptr;
    ssize_t size = 0;
    const status_t status = message.FindData(name, type, index, &data, &size);
    if (status != B_OK)
        return status;
    if (!value || size != static_cast<ssize_t>(sizeof(Value)))
        return B_BAD_VALUE;
    memcpy(static_cast<void*>(value), data, sizeof(Value));
    return B_OK;
}

// Any byte but 0 is true: copied into a bool it would be neither true nor false.
status_t FindValue(
    const BMessage& message, const char* name, type_code type, int32 index, bool* value)
{
    uint8 byte = 0;
    const status_t status = FindValue(message, name, type, index, &byte);
    if (status == B_OK && value)
        *value = byte != 0;
    return status != B_OK || value ? status : B_BAD_VALUE;
}

} // namespace

#define MESSAGE_VALUE(Name, Value, type)                                                           \
    status_t BMessage::Add##Name(const char* name, Value value)                                    \
    {                                                                                              \
        return AddData(name, type, &value, sizeof(value));                                         \
    }                                                                                              \
    bool BMessage::Has##Name(const char* name, int32 index) const                                  \
    {                                                                                              \
        return HasData(name, type, index);                                                         \
    }

#define MESSAGE_FIND(Name, Value, type)                                                            \
    status_t BMessage::Find##Name(const char* name, Value* value) const                            \
    {                                                                                              \
        return FindValue(*this, name, type, 0, value);                                             \
    }                                                                                              \
    status_t BMessage::Find##Name(const char* name, int32 index, Value* value) const               \
    {                                                                                              \
        return FindValue(*this, name, type, index, value);                                         \
    }

#define MESSAGE_TYPE(Name, Value, type)                                                            \
    MESSAGE_VALUE(Name, Value, type)                                                               \
    MESSAGE_FIND(Name, Value, type)

MESSAGE_TYPE(Bool, bool, B_BOOL_TYPE)
MESSAGE_TYPE(Int32, int32, B_INT32_TYPE)
MESSAGE_TYPE(Int64, int64, B_INT64_TYPE)
MESSAGE_TYPE(Float, float, B_FLOAT_TYPE)
MESSAGE_TYPE(Point, BPoint, B_POINT_TYPE)
MESSAGE_TYPE(Rect, BRect, B_RECT_TYPE)
MESSAGE_VALUE(Pointer, const void*, B_POINTER_TYPE)
MESSAGE_FIND(Pointer, void*, B_POINTER_TYPE)

status_t BMessage::AddString(const char* name, const char* text)
{
    if (!text)
        return B_BAD_VALUE;
    return AddData(name, B_STRING_TYPE, text, static_cast<ssize_t>(strlen(text)) + 1, false);
}

status_t BMessage::FindString(const char* name, const char** text) const
{
    return FindString(name, 0, text);
}

status_t BMessage::FindString(const char* name, int32 index, const char** text) const
{
    const void* data = nullptr;
    const status_t status = FindData(name, B_STRING_TYPE, index, &data, nullptr);
    if (!text)
        return B_BAD_VALUE;
    *text = static_cast<const char*>(data);
    return status;
}

bool BMessage::HasString(const char* name, int32 index) const
{
    return HasData(name, B_STRING_TYPE, index);
}

namespace {

// Device and number of the directory (8 bytes each), its path and the leaf name, each with its NUL.
std::string FlatRef(const entry_ref& ref)
{
    const int64 numbers[] = { static_cast<int64>(ref.device), static_cast<int64>(ref.directory) };
    std::string bytes(reinterpret_cast<const char*>(numbers), sizeof(numbers));
    bytes.append(ref.directoryPath.c_str(), ref.directoryPath.size() + 1);
    bytes.append(ref.name ? ref.name : "");
    bytes.push_back('\0');
    return bytes;
}

status_t ReadRef(const void* data, size_t size, entry_ref& ref)
{
    int64 numbers[2];
    if (size < sizeof(numbers))
        return B_BAD_VALUE;
    memcpy(numbers, data, sizeof(numbers));
    const std::string_view texts(
        static_cast<const char*>(data) + sizeof(numbers), size - sizeof(numbers));
    const size_t pathEnd = texts.find('\0');
    // Two texts to the last byte and nothing behind them: the message may come from a file that
    // anybody wrote.
    if (pathEnd == texts.npos || texts.find('\0', pathEnd + 1) != texts.size() - 1)
        return B_BAD_VALUE;
    const char* name = texts.data() + pathEnd + 1;
    ref = entry_ref(
        static_cast<dev_t>(numbers[0]), static_cast<ino_t>(numbers[1]), *name ? name : nullptr);
    ref.directoryPath = texts.substr(0, pathEnd);
    return B_OK;
}

} // namespace

status_t BMessage::AddRef(const char* name, const entry_ref* ref)
{
    if (!ref)
        return B_BAD_VALUE;
    const std::string bytes = FlatRef(*ref);
    return AddData(name, B_REF_TYPE, bytes.data(), static_cast<ssize_t>(bytes.size()), false);
}

status_t BMessage::FindRef(const char* name, entry_ref* ref) const
{
    return FindRef(name, 0, ref);
}

status_t BMessage::FindRef(const char* name, int32 index, entry_ref* ref) const
{
    const void* data = nullptr;
    ssize_t size = 0;
    if (const status_t status = FindData(name, B_REF_TYPE, index, &data, &size); status != B_OK)
        return status;
    return ref ? ReadRef(data, static_cast<size_t>(size), *ref) : B_BAD_VALUE;
}

bool BMessage::HasRef(const char* name, int32 index) const
{
    return HasData(name, B_REF_TYPE, index);
}

namespace {

// Calls put with the message's bytes.
template <typename Put>
status_t WithFlat(const BMessage* message, Put put)
{
    if (!message)
        return B_BAD_VALUE;
    try {
        std::vector<char> bytes(static_cast<size_t>(message->FlattenedSize()));
        message->Flatten(bytes.data(), static_cast<ssize_t>(bytes.size()));
        return put(bytes.data(), static_cast<ssize_t>(bytes.size()));
    } catch (const std::bad_alloc&) {
        return B_NO_MEMORY;
    }
}

} // namespace

status_t BMessage::AddMessage(const char* name, const BMessage* message)
{
    return WithFlat(message, [&](const char* bytes, ssize_t size) {
        return AddData(name, B_MESSAGE_TYPE, bytes, size, false);
    });
}

status_t BMessage::FindMessage(const char* name, BMessage* message) const
{
    return FindMessage(name, 0, message);
}

status_t BMessage::FindMessage(const char* name, int32 index, BMessage* message) const
{
    if (!message)
        return B_BAD_VALUE;
    const void* data = nullptr;
    ssize_t size = 0;
    const status_t status = FindData(name, B_MESSAGE_TYPE, index, &data, &size);
    if (status == B_OK)
        return message->Unflatten(static_cast<const char*>(data), size);
    message->MakeEmpty();
    return status;
}

bool BMessage::HasMessage(const char* name, int32 index) const
{
    return HasData(name, B_MESSAGE_TYPE, index);
}
