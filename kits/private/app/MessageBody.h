// The fields of a message: names in the order of adding, each with values of one type; and how they
// lie in bytes.
#pragma once

#include "TypeConstants.h"

#include <string>
#include <string_view>
#include <vector>

struct MessageField {
    std::string name;
    type_code type = 0;
    bool fixedSize = false; // all values have the size of the first
    std::vector<std::string> items; // never empty; text with its final NUL
};

// Errors throughout as BMessage documents them; a failure changes nothing.
class MessageBody {
public:
    status_t Add(const char* name, type_code type, std::string_view data, bool fixedSize);
    status_t Find(const char* name, type_code type, int32 index, const std::string*& item) const;
    status_t RemoveName(const char* name);

    const MessageField* Field(const char* name) const; // NULL if there is none
    const std::vector<MessageField>& Fields() const { return fFields; }
    void SetFields(std::vector<MessageField> fields) { fFields = std::move(fields); }

private:
    MessageField* Writable(const char* name);

    std::vector<MessageField> fFields;
};

// Messages as bytes, all numbers with the lowest byte first:
//
//   header  magic, checksum, size of the whole (8 bytes), what, number of fields
//   field   type, 1 if of fixed size else 0, length of the name, number of items, name
//   item    size, bytes
//
// The checksum covers everything behind it. A message inside a message is the bytes of one item, so
// that reading goes no deeper than one level at a time.
constexpr uint32 kFlatMagic = 'TVM1';
constexpr size_t kFlatHeaderSize = 24;
constexpr size_t kFlatChecksumOffset = 4;
constexpr size_t kFlatSizeOffset = 8;

size_t FlatSize(const std::vector<MessageField>& fields);
// Writes FlatSize() bytes.
void WriteFlat(uint32 what, const std::vector<MessageField>& fields, char* bytes);
// The size that the header of a message claims; 0 if these are not the first kFlatHeaderSize bytes
// of one.
uint64 ClaimedFlatSize(std::string_view header);
// The message at the start of bytes. Errors as BMessage::Unflatten(); what and fields are then as
// they were. Takes no more memory than a small multiple of the bytes.
status_t ReadFlat(std::string_view bytes, uint32& what, std::vector<MessageField>& fields);
// Of a whole flattened message (CRC-32).
uint32 FlatChecksum(std::string_view message);
