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
