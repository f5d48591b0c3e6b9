#include "MessageBody.h"

#include <algorithm>
#include <climits>
#include <cstring>
#include <new>

#include "Message.h"

namespace {

bool IsGoodName(const char* name)
{
    return name && strlen(name) <= size_t(B_FIELD_NAME_LENGTH);
}

bool HasItem(const MessageField& field, int32 index)
{
    return index >= 0 && size_t(index) < field.items.size();
}

} // namespace

status_t MessageBody::Add(const char* name, type_code type, std::string_view data, bool fixedSize)
{
    if (!IsGoodName(name) || data.size() > INT_MAX)
        return B_BAD_VALUE;
    try {
        MessageField* field = Writable(name);
        if (!field) {
            fFields.push_back({ name, type, fixedSize, { std::string(data) } });
            return B_OK;
        }
        if (field->type != type)
            return B_BAD_TYPE;
        if (field->fixedSize && field->items.front().size() != data.size())
            return B_BAD_VALUE;
        field->items.emplace_back(data);
    } catch (const std::bad_alloc&) {
        return B_NO_MEMORY;
    }
    return B_OK;
}

status_t MessageBody::Find(
    const char* name, type_code type, int32 index, const std::string*& item) const
{
    if (!name)
        return B_BAD_VALUE;
    const MessageField* field = Field(name);
    if (!field)
        return B_NAME_NOT_FOUND;
    if (type != B_ANY_TYPE && type != field->type)
        return B_BAD_TYPE;
    if (!HasItem(*field, index))
        return B_BAD_INDEX;
    item = &field->items[index];
    return B_OK;
}

status_t MessageBody::RemoveName(const char* name)
{
    if (!name)
        return B_BAD_VALUE;
    const auto removed =
        std::erase_if(fFields, [name](const MessageField& field) { return field.name == name; });
    if (removed == 0)
        return B_NAME_NOT_FOUND;
    return B_OK;
}

const MessageField* MessageBody::Field(const char* name) const
{
    const auto found = std::find_if(fFields.begin(), fFields.end(),
        [name](const MessageField& field) { return field.name == name; });
    return found == fFields.end() ? nullptr : &*found;
}

MessageField* MessageBody::Writable(const char* name)
{
    return const_cast<MessageField*>(Field(name));
}
