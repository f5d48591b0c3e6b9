#include "foundation/LibString.h"

#include "foundation/PlainText.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <new>
#include <string>

namespace {

constexpr size_t kInt32Buffer = 11; // ten digits with a sign get one byte more
constexpr size_t kFloat32Buffer = 11;
constexpr size_t kFloat64Buffer = 16;
constexpr size_t kMostBuffer = INT32_MAX;
constexpr char kHexDigits[] = "0123456789ABCDEF";

std::string Cut(const std::string& text, size_t capacity)
{
    return text.substr(0, capacity - 1);
}

// Null, with a line on standard error, if there is not as much memory or it is too much.
std::unique_ptr<char[]> NewBuffer(size_t capacity)
{
    std::unique_ptr<char[]> bytes;
    if (capacity <= kMostBuffer)
        bytes.reset(new (std::nothrow) char[capacity]);
    if (!bytes)
        fprintf(stderr, "No room for a text of <%zu> bytes\n", capacity);
    return bytes;
}

template <class Integer>
bool GetInteger(const LibString& text, Integer& value)
{
    value = 0;
    if (!text.IsNumeric())
        return false;
    // Without a buffer it counts as "", which is numeric. Of "", of a sign alone and of "." strtol
    // makes 0.
    if (const char* digits = text; digits)
        value = static_cast<Integer>(strtol(digits, nullptr, 10));
    return true;
}

constexpr size_t kNone = std::string_view::npos;

// True if a name such as "O'Neil" goes on at index i: after an apostrophe that stands at the
// beginning of a word or behind its first letter. The "s" of "a's" ends a word.
bool IsNameAfterApostrophe(std::string_view text, size_t i)
{
    if (i < 2 || text[i - 1] != '\'' || text[i] == 's')
        return false;
    return LibIsSpace(text[i - 2]) || i == 2 || LibIsSpace(text[i - 3]);
}

bool IsProperCapital(std::string_view text, size_t i)
{
    if (i == 0)
        return true;
    const char before = text[i - 1];
    const char after = i + 1 < text.size() ? text[i + 1] : '\0';
    return LibIsSpace(before) || (before == '.' && after == '.') || before == '&'
        || (i == 1 && before == '\'') || IsNameAfterApostrophe(text, i);
}

} // namespace

LibString::LibString()
{
    SetBuffer(0);
}

LibString::LibString(const int32& n)
{
    SetBuffer(n);
}

LibString::LibString(const char* s)
{
    *this = s;
}

LibString::LibString(const LibString& o)
{
    *this = o;
}

LibString::~LibString()
{
    LibString::Clear();
}

void LibString::PrintToStream() const
{
    fprintf(stderr, "LibString:: <%s>, buffer %d\n", View().data(), size);
}

void LibString::SetText(std::string_view text, size_t capacity)
{
    std::unique_ptr<char[]> bytes = NewBuffer(capacity);
    if (!bytes)
        return;
    const size_t length = std::min(text.size(), capacity - 1);
    memcpy(bytes.get(), text.data(), length);
    bytes[length] = '\0';
    delete[] buffer; // only now, text may lie in it
    buffer = bytes.release();
    size = static_cast<int32>(capacity);
}

// Puts with in place of so many bytes at from, as many as there are. False if that is refused.
bool LibString::Splice(size_t from, size_t removed, std::string_view with)
{
    const std::string_view text = View();
    const std::string_view tail = text.substr(std::min(from + removed, text.size()));
    const size_t length = from + with.size() + tail.size();
    // By std::less: "<" promises nothing for pointers into different buffers.
    const bool isOwn = !std::less()(with.data(), buffer) && std::less()(with.data(), buffer + size);
    if (length < static_cast<size_t>(size) && !isOwn) {
        // The tail first: what is put in may be written over where it was.
        memmove(buffer + from + with.size(), tail.data(), tail.size());
        memcpy(buffer + from, with.data(), with.size());
    } else {
        // Never less than before: who made room for a long text keeps it.
        const size_t capacity = std::max(length + 1, static_cast<size_t>(size));
        std::unique_ptr<char[]> bytes = NewBuffer(capacity);
        if (!bytes)
            return false;
        memcpy(bytes.get(), text.data(), from);
        memcpy(bytes.get() + from, with.data(), with.size());
        memcpy(bytes.get() + from + with.size(), tail.data(), tail.size());
        delete[] buffer;
        buffer = bytes.release();
        size = static_cast<int32>(capacity);
    }
    buffer[length] = '\0';
    return true;
}

void LibString::SetBuffer(const int32& n)
{
    // So that with the end mark the size is still an int32.
    SetText("", static_cast<size_t>(std::clamp(n, 0, INT32_MAX - 1)) + 1);
}

void LibString::Clear()
{
    delete[] buffer;
    buffer = nullptr;
    size = 0;
}

LibString& LibString::operator=(const LibString& o)
{
    if (this == &o)
        return *this;
    // No buffer is not the same as an empty text: it converts to a null pointer.
    if (!o.buffer)
        Clear();
    else
        SetText(o.View(), static_cast<size_t>(o.size));
    return *this;
}

LibString& LibString::operator=(const char* s)
{
    if (s)
        SetText(s, strlen(s) + 1);
    return *this;
}

LibString& LibString::operator=(const int32& v)
{
    const std::string text = std::to_string(v);
    SetText(text, std::max(kInt32Buffer, text.size() + 1));
    return *this;
}

LibString& LibString::operator=(const float& v)
{
    SetFloat32(v, 6);
    return *this;
}

LibString& LibString::operator=(const double& v)
{
    SetFloat64(v, 6);
    return *this;
}

void LibString::SetFloat32(const float& v, const int& decimals)
{
    SetText(LibFixedText(v, decimals), kFloat32Buffer);
}

void LibString::SetFloat64(const double& v, const int& decimals)
{
    SetText(LibFixedText(v, decimals), kFloat64Buffer);
}

void LibString::SetHex(const uint8& v)
{
    const char digits[] = { kHexDigits[v >> 4], kHexDigits[v & 15] };
    SetText(std::string_view(digits, 2), 3);
}

void LibString::Formatted(const char* format, ...)
{
    // A buffer apart, as an argument may be this text. Empty at first: a format that fails leaves
    // what is in it undefined.
    char text[512] = "";
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);
    *this = text;
}

int32 LibString::PackSize() const
{
    return LibToInt32(static_cast<int64>(View().size()) + 4);
}

char* LibString::Concat(const char* s)
{
    return !s || Splice(View().size(), 0, s) ? buffer : nullptr;
}

char* LibString::Concat(const char& c)
{
    const char text[] = { c, '\0' };
    return Concat(text);
}

LibString& LibString::operator+=(const int32& v)
{
    Concat(std::to_string(v).c_str());
    return *this;
}

LibString& LibString::operator+=(const float& v)
{
    Concat(Cut(LibFixedText(v, 6), kFloat32Buffer).c_str());
    return *this;
}

LibString& LibString::operator+=(const double& v)
{
    Concat(Cut(LibFixedText(v, 6), kFloat64Buffer).c_str());
    return *this;
}

void LibString::PrePend(const char* s)
{
    if (!s)
        return;
    // Put together apart: if there is no room for all, this string stays as it was.
    LibString text;
    if (text.Concat(s) && text.Concat(View().data()))
        *this = text;
}

void LibString::Insert(const int& pos, const char* s)
{
    const size_t length = View().size();
    if (!s)
        return;
    if (length == 0) {
        *this = s;
        return;
    }
    const bool exists = pos >= -1 && pos < static_cast<int64>(length);
    Splice(exists ? static_cast<size_t>(pos + 1) : length, 0, s);
}

void LibString::Read(const char* path, const int32& lineSize)
{
    if (!path || lineSize < 2)
        return;
    FILE* file = fopen(path, "r");
    if (!file)
        return;
    const LibString name(path); // which may lie in this text
    const std::unique_ptr<char[]> line = NewBuffer(static_cast<size_t>(lineSize));
    while (line && fgets(line.get(), lineSize, file) && Concat(line.get())) { }
    if (ferror(file))
        fprintf(stderr, "Error reading <%s>: %s\n", name.View().data(), strerror(errno));
    fclose(file);
}

bool LibString::GetInt8(int8& value) const
{
    return GetInteger(*this, value);
}

bool LibString::GetUint8(uint8& value) const
{
    return GetInteger(*this, value);
}

bool LibString::GetInt16(int16& value) const
{
    return GetInteger(*this, value);
}

bool LibString::GetUint16(uint16& value) const
{
    return GetInteger(*this, value);
}

bool LibString::GetInt32(int32& value) const
{
    return GetInteger(*this, value);
}

bool LibString::GetUint32(uint32& value) const
{
    return GetInteger(*this, value);
}

bool LibString::GetFloat32(float& value) const
{
    double wide = 0;
    const bool numeric = GetFloat64(wide);
    value = static_cast<float>(wide);
    return numeric;
}

bool LibString::GetFloat64(double& value) const
{
    const bool numeric = IsNumeric();
    // Not by strtod(), which expects the comma of the locale.
    value = numeric ? LibFixedValue(View()) : 0;
    return numeric;
}

uint8 LibString::GetHex() const
{
    const std::string_view text = View();
    if (text.size() != 2)
        return 0;
    return static_cast<uint8>(16 * HexValue(text[0]) + HexValue(text[1]));
}

int LibString::HexValue(const char& c) const
{
    const size_t value = std::string_view(kHexDigits).find(LibToUpper(c));
    return value != std::string_view::npos ? static_cast<int>(value) : 0;
}

// What changes the text in place.

template <class Predicate>
void LibString::RemoveIf(Predicate remove)
{
    if (buffer)
        *std::remove_if(buffer, buffer + View().size(), remove) = '\0';
}

// Ends the text at length if it is longer.
void LibString::CutAt(size_t length)
{
    if (length < View().size())
        buffer[length] = '\0';
}

size_t LibString::NthOf(char c, int32 n) const
{
    size_t found = View().find(c);
    for (; n > 0 && found != kNone; n--)
        found = View().find(c, found + 1);
    return n < 0 ? kNone : found;
}

void LibString::ToIndex(const int32& i)
{
    if (i >= -1)
        CutAt(static_cast<size_t>(static_cast<int64>(i) + 1));
}

void LibString::FromIndex(const int32& i)
{
    if (i < 0)
        CutAt(0);
    else
        ShiftFrom(0, i);
}

bool LibString::ToChar(const char& c, const int32& n, const int& delta)
{
    const size_t found = NthOf(c, n);
    if (found == kNone)
        return false;
    // In 64 bits: the sum of an index and any delta may be more than an int.
    CutAt(static_cast<size_t>(std::max<int64>(0, static_cast<int64>(found) + delta)));
    return true;
}

bool LibString::FromChar(const char& c, const int32& n, const int& delta)
{
    const size_t found = NthOf(c, n);
    if (found == kNone)
        return false;
    const int64 from = static_cast<int64>(found) + delta;
    // What is too large for an index becomes a bad one, which empties the text like any other.
    FromIndex(static_cast<int32>(std::clamp<int64>(from, -1, INT32_MAX)));
    return true;
}

void LibString::ToLast(const char& c, const int32& delta)
{
    const size_t found = View().rfind(c);
    const int64 to = static_cast<int64>(found) + delta;
    if (found != kNone && to >= -1)
        CutAt(static_cast<size_t>(to + 1));
}

void LibString::FromLast(const char& c, const int32& delta)
{
    const size_t found = View().rfind(c);
    const int64 from = static_cast<int64>(found) + delta;
    if (found != kNone)
        FromIndex(static_cast<int32>(std::clamp<int64>(from, -1, INT32_MAX)));
}

void LibString::RemoveChar(const int32& i)
{
    Remove(i, i);
}

void LibString::Remove(const int32& from, const int32& to)
{
    // No text has a byte of index INT32_MAX, so nothing is lost where 1 cannot be added.
    if (from >= 0 && to >= from)
        ShiftFrom(from, to < INT32_MAX ? to + 1 : to);
}

void LibString::ShiftFrom(const int32& dest, const int32& src)
{
    const size_t length = View().size();
    if (dest < 0 || src < 0)
        return;
    const auto from = std::min(static_cast<size_t>(src), length);
    const auto to = static_cast<size_t>(dest);
    if (to < from)
        // With the end mark.
        memmove(buffer + to, buffer + from, length - from + 1);
}

bool LibString::RemoveWord(const char* word)
{
    const std::string_view wanted = word ? word : "";
    const std::string_view text = View();
    for (size_t from = 0; from < text.size();) {
        const std::string_view rest = text.substr(from);
        const auto end = std::find_if(rest.begin(), rest.end(), LibIsSpace);
        const std::string_view found(rest.begin(), end);
        if (!found.empty() && found == wanted) {
            ShiftFrom(static_cast<int32>(from), static_cast<int32>(from + found.size()));
            return true;
        }
        from += found.size() + 1;
    }
    return false;
}

void LibString::RemoveAllWords(const char* word)
{
    const LibString wanted(word); // word may lie in the text that changes
    while (RemoveWord(wanted)) { }
}

void LibString::RemoveRepeatingChar(const char& c)
{
    if (!buffer)
        return;
    const auto repeats = [wanted = c](char a, char b) { return a == wanted && b == wanted; };
    *std::unique(buffer, buffer + View().size(), repeats) = '\0';
}

int32 LibString::Replace(const char* old, const char* with)
{
    const int32 found = Index(old);
    if (found < 0)
        return -1;
    const size_t removed = old ? strlen(old) : 0;
    return Splice(static_cast<size_t>(found), removed, with ? with : "") ? found : -1;
}

void LibString::ReplaceAll(const char* old, const char* with)
{
    const LibString searched(old); // both may lie in the text that changes
    const LibString inserted(with ? with : "");
    if (searched.View().empty() || !inserted.buffer)
        return;
    while (Replace(searched, inserted) >= 0) { }
}

void LibString::ReplaceAll(const char& a, const char& b)
{
    const char from = a; // copies, as a and b may be bytes of the text that changes
    const char to = b;
    std::replace(buffer, buffer + View().size(), from, to);
}

void LibString::SwapChar(const char& a, const char& b)
{
    // One way only, in spite of the name: b stays what it is.
    ReplaceAll(a, b);
}

void LibString::StripLeadingSpaces()
{
    const std::string_view text = View();
    const auto first = std::find_if_not(text.begin(), text.end(), LibIsSpace);
    ShiftFrom(0, static_cast<int32>(first - text.begin()));
}

void LibString::StripTrailingSpaces()
{
    const std::string_view text = View();
    const auto last = std::find_if_not(text.rbegin(), text.rend(), LibIsSpace);
    CutAt(static_cast<size_t>(text.rend() - last));
}

void LibString::StripAllSpaces()
{
    RemoveIf(LibIsSpace);
}

void LibString::StripLeadingChar(const char& c)
{
    const size_t first = View().find_first_not_of(c);
    FromIndex(first != kNone ? static_cast<int32>(first) : -1);
}

void LibString::StripTrailingChar(const char& c)
{
    CutAt(View().find_last_not_of(c) + 1); // none other: kNone + 1, which is 0
}

void LibString::StripPunct()
{
    RemoveIf([](char c) { return LibIsPunct(c) && c != '_'; });
}

void LibString::ToUpperCase()
{
    // Letters of ASCII only: a change to the bytes of other characters would tear them apart.
    std::transform(buffer, buffer + View().size(), buffer, LibToUpper);
}

void LibString::ToLowerCase()
{
    std::transform(buffer, buffer + View().size(), buffer, LibToLower);
}

void LibString::ToProperCase()
{
    ToLowerCase();
    const std::string_view text = View();
    for (size_t i = 0; i < text.size(); i++) {
        // From the left: that a word ends in "'s" is seen by an s that is not raised yet.
        if (IsProperCapital(text, i))
            buffer[i] = LibToUpper(buffer[i]);
    }
}

// The first byte of character n, at most the length of the text.
size_t LibString::CharOffset(int32 n) const
{
    const std::string_view text = View();
    int64 position = 0;
    uint32 length = 0;
    for (; n > 0 && position < static_cast<int64>(text.size()); n--)
        NextCharacter(text.data(), position, length);
    return std::min(static_cast<size_t>(position), text.size());
}

void LibString::CharToIndex(const int32& n)
{
    // Of a longer character the first byte alone stays: what is cut are bytes.
    if (n >= 0 && n < CharCount())
        CutAt(CharOffset(n) + 1);
}

void LibString::CharFromIndex(const int32& n)
{
    if (n >= 0 && n < CharCount())
        ShiftFrom(0, static_cast<int32>(CharOffset(n)));
}
