#include "MessageBody.h"

#include "Message.h"

#include <algorithm>
#include <array>
#include <bit>
#include <climits>
#include <cstring>
#include <new>
#include <unordered_set>

namespace {

bool IsGoodName(const char* name)
{
    return name && strlen(name) <= static_cast<size_t>(B_FIELD_NAME_LENGTH);
}

bool HasItem(const MessageField& field, int32 index)
{
    return index >= 0 && static_cast<size_t>(index) < field.items.size();
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
    // The object is not const, only the way to find it is.
    return const_cast<MessageField*>(Field(name));
}

static_assert(
    std::endian::native == std::endian::little, "values are copied as they lie in memory");

namespace {

constexpr size_t kFieldHeaderSize = 16;
constexpr size_t kItemHeaderSize = 4;

// The polynomial of Ethernet and zip, 0x04c11db7, its lowest bit first (ISO 3309). It finds what a
// disk or a cut file did to the bytes; it is no protection from who means harm, so the rest is
// checked as if it were not there.
constexpr std::array<uint32, 256> MakeCrcTable()
{
    std::array<uint32, 256> table {};
    for (uint32 i = 0; i < table.size(); ++i) {
        uint32 crc = i;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) ? 0xedb88320u : 0);
        table[i] = crc;
    }
    return table;
}

class Writer {
public:
    explicit Writer(char* bytes) : fNext(bytes) { }

    template <typename Number>
    void Put(Number number)
    {
        memcpy(fNext, &number, sizeof(number));
        fNext += sizeof(number);
    }
    void PutText(std::string_view text)
    {
        memcpy(fNext, text.data(), text.size());
        fNext += text.size();
    }

private:
    char* fNext;
};

// Reads from the front; every Get is false, and gives nothing, where too little is left.
class Reader {
public:
    explicit Reader(std::string_view bytes) : fRest(bytes) { }

    template <typename Number>
    bool Get(Number& number)
    {
        if (fRest.size() < sizeof(number))
            return false;
        memcpy(&number, fRest.data(), sizeof(number));
        fRest.remove_prefix(sizeof(number));
        return true;
    }
    bool Get(size_t length, std::string_view& text)
    {
        if (fRest.size() < length)
            return false;
        text = fRest.substr(0, length);
        fRest.remove_prefix(length);
        return true;
    }
    size_t Left() const { return fRest.size(); }

private:
    std::string_view fRest;
};

// No room is made for the items that are promised: they may never come.
bool ReadItems(Reader& reader, uint32 count, MessageField& field)
{
    if (count == 0)
        return false;
    for (uint32 i = 0; i < count; ++i) {
        uint32 size = 0;
        std::string_view data;
        if (!reader.Get(size) || !reader.Get(size, data))
            return false;
        if (field.fixedSize && i > 0 && size != field.items.front().size())
            return false;
        field.items.emplace_back(data);
    }
    return true;
}

bool ReadField(Reader& reader, MessageField& field)
{
    uint32 fixedSize = 0;
    uint32 nameLength = 0;
    uint32 count = 0;
    std::string_view name;
    if (!reader.Get(field.type) || !reader.Get(fixedSize) || !reader.Get(nameLength)
        || !reader.Get(count))
        return false;
    // A name with a NUL inside would be another one to whoever asks by a C string, and two fields
    // could look the same.
    if (fixedSize > 1 || nameLength > static_cast<uint32>(B_FIELD_NAME_LENGTH)
        || !reader.Get(nameLength, name) || name.find('\0') != name.npos)
        return false;
    field.fixedSize = fixedSize == 1;
    field.name = name;
    return ReadItems(reader, count, field);
}

bool ReadFields(Reader& reader, uint32 count, std::vector<MessageField>& fields)
{
    std::unordered_set<std::string> names; // a linear search would take hours on a hostile message
    for (uint32 i = 0; i < count; ++i) {
        MessageField field;
        if (!ReadField(reader, field) || !names.insert(field.name).second)
            return false;
        fields.push_back(std::move(field));
    }
    return reader.Left() == 0;
}

} // namespace

size_t FlatSize(const std::vector<MessageField>& fields)
{
    size_t size = kFlatHeaderSize;
    for (const MessageField& field : fields) {
        size += kFieldHeaderSize + field.name.size();
        for (const std::string& item : field.items)
            size += kItemHeaderSize + item.size();
    }
    return size;
}

void WriteFlat(uint32 what, const std::vector<MessageField>& fields, char* bytes)
{
    const size_t size = FlatSize(fields);
    Writer writer(bytes);
    writer.Put(kFlatMagic);
    writer.Put(static_cast<uint32>(0));
    writer.Put(static_cast<uint64>(size));
    writer.Put(what);
    writer.Put(static_cast<uint32>(fields.size()));
    for (const MessageField& field : fields) {
        writer.Put(field.type);
        writer.Put(static_cast<uint32>(field.fixedSize));
        writer.Put(static_cast<uint32>(field.name.size()));
        writer.Put(static_cast<uint32>(field.items.size()));
        writer.PutText(field.name);
        for (const std::string& item : field.items) {
            writer.Put(static_cast<uint32>(item.size()));
            writer.PutText(item);
        }
    }
    Writer(bytes + kFlatChecksumOffset).Put(FlatChecksum({ bytes, size }));
}

uint64 ClaimedFlatSize(std::string_view header)
{
    Reader reader(header.substr(0, kFlatHeaderSize));
    uint32 magic = 0;
    uint32 checksum = 0;
    uint64 size = 0;
    if (reader.Left() < kFlatHeaderSize || !reader.Get(magic) || magic != kFlatMagic)
        return 0;
    return reader.Get(checksum) && reader.Get(size) && size >= kFlatHeaderSize ? size : 0;
}

status_t ReadFlat(std::string_view bytes, uint32& what, std::vector<MessageField>& fields)
{
    const uint64 size = ClaimedFlatSize(bytes);
    if (size == 0)
        return B_BAD_VALUE;
    if (size > bytes.size())
        return B_MISMATCHED_VALUES;
    // What lies behind belongs to somebody else: messages are read out of larger blocks.
    bytes = bytes.substr(0, size);
    uint32 checksum = 0;
    memcpy(&checksum, bytes.data() + kFlatChecksumOffset, sizeof(checksum));
    if (checksum != FlatChecksum(bytes))
        return B_MISMATCHED_VALUES;

    Reader reader(bytes.substr(kFlatSizeOffset + sizeof(size)));
    uint32 newWhat = 0;
    uint32 count = 0;
    std::vector<MessageField> newFields;
    try {
        if (!reader.Get(newWhat) || !reader.Get(count) || !ReadFields(reader, count, newFields))
            return B_MISMATCHED_VALUES;
    } catch (const std::bad_alloc&) {
        return B_NO_MEMORY;
    }
    what = newWhat;
    fields = std::move(newFields);
    return B_OK;
}

uint32 FlatChecksum(std::string_view message)
{
    static constexpr std::array<uint32, 256> kTable = MakeCrcTable();
    uint32 crc = 0xffffffff;
    for (const char byte : message.substr(kFlatSizeOffset))
        crc = kTable[(crc ^ static_cast<uint8>(byte)) & 0xff] ^ (crc >> 8);
    return ~crc;
}
