#include "foundation/LibStringIterator.h"

#include <algorithm>
#include <cstdio>
#include <string>

LibStringIterator& LibStringIterator::operator=(const char* s)
{
    position = 0;
    LibString::operator=(s);
    return *this;
}

LibStringIterator& LibStringIterator::operator=(const LibString& s)
{
    if (this != &s) {
        position = 0;
        LibString::operator=(s);
    }
    return *this;
}

LibStringIterator& LibStringIterator::operator=(const LibStringIterator& other) = default;

void LibStringIterator::PrintToStream() const
{
    LibString::PrintToStream();
    fprintf(stderr, "position %d\n", position);
}

std::string_view LibStringIterator::Rest() const
{
    const std::string_view text = View();
    return text.substr(std::min(static_cast<size_t>(std::max(position, 0)), text.size()));
}

void LibStringIterator::TakeField(size_t length, LibString& field)
{
    const std::string text(Rest().substr(0, length)); // field may be this string itself
    position = std::max(position, 0) + static_cast<int32>(length + 1);
    field = text.c_str();
}

bool LibStringIterator::GetNextField(const char& delimiter, LibString& field)
{
    const std::string_view rest = Rest();
    const size_t length = rest.find(delimiter);
    if (length != std::string_view::npos) {
        TakeField(length, field);
        return true;
    }
    // The last character stays to be read, so that the call after the last field ends a loop.
    const bool whole = rest.size() > 1;
    if (whole)
        position = static_cast<int32>(View().size() - 1);
    // A copy: field may be this string, whose bytes go when it is set.
    field = std::string(rest).c_str();
    return whole;
}

bool LibStringIterator::GetNextField(const char* delimiters, LibString& field)
{
    const std::string_view rest = Rest();
    const size_t length = rest.find_first_of(delimiters ? delimiters : "");
    if (length != std::string_view::npos) {
        TakeField(length, field);
        return true;
    }
    field = std::string(rest).c_str();
    return false;
}

bool LibStringIterator::GetIndexField(const char& delimiter, const int32& index, LibString& field)
{
    const char separator = delimiter; // the argument may lie in this text or in field
    LibString next;
    Reset(0);
    for (int32 i = 0; GetNextField(separator, next); i++) {
        if (i == index) {
            field = static_cast<const char*>(next);
            return true;
        }
    }
    return false;
}
