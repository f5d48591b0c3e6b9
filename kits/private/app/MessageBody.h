// The fields of a message: names in the order of adding, each with values of one type.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "TypeConstants.h"

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
