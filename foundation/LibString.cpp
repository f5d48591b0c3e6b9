#include "foundation/LibString.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "foundation/AsciiCharacters.h"
#include "foundation/FixedText.h"

namespace {

constexpr int32 kInt32Buffer = 11;
constexpr int32 kFloat32Buffer = 11;
constexpr int32 kFloat64Buffer = 16;
constexpr char kHexDigits[] = "0123456789ABCDEF";

int32 CapacityFor(std::string_view text)
{
    return static_cast<int32>(text.size() + 1);
}

std::string Cut(std::string text, int32 capacity)
{
    return text.substr(0, static_cast<size_t>(capacity - 1));
}

template <class Integer>
bool GetInteger(const LibString& text, Integer& value)
{
    value = 0;
    if (!text.IsNumeric())
        return false;
    if (const char* digits = text; digits != nullptr)
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

void LibString::SetText(std::string_view text, int32 capacity)
{
    char* old = buffer; // freed last, text may lie in it
    buffer = new char[static_cast<size_t>(capacity)];
    const size_t length = std::min(text.size(), static_cast<size_t>(capacity - 1));
    memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
    size = capacity;
    delete[] old;
}

void LibString::SetBuffer(const int32& n)
{
    SetText("", std::clamp(n, 0, INT32_MAX - 1) + 1);
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
    if (o.buffer == nullptr)
        Clear();
    else
        SetText(o.View(), o.size);
    return *this;
}

LibString& LibString::operator=(const char* s)
{
    if (s != nullptr)
        SetText(s, CapacityFor(s));
    return *this;
}

LibString& LibString::operator=(const int32& v)
{
    SetText(std::to_string(v), kInt32Buffer);
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
    char text[512] = "";
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(text, sizeof(text), format, arguments);
    va_end(arguments);
    *this = text;
}

int32 LibString::PackSize() const
{
    return static_cast<int32>(View().size() + 4);
}

char* LibString::Concat(const char* s)
{
    if (s == nullptr)
        return buffer;
    const size_t length = View().size();
    const size_t added = strlen(s);
    if (length + added < static_cast<size_t>(size)) {
        memmove(buffer + length, s, added);
    } else {
        std::unique_ptr<char[]> old(buffer); // freed last, s may lie in it
        buffer = new char[length + added + 1];
        memcpy(buffer, old != nullptr ? old.get() : "", length);
        memcpy(buffer + length, s, added);
        size = static_cast<int32>(length + added + 1);
    }
    buffer[length + added] = '\0';
    return buffer;
}

char* LibString::Concat(const char& c)
{
    const char text[] = { c, '\0' };
    return Concat(text);
}

LibString& LibString::operator+=(const int32& v)
{
    Concat(Cut(std::to_string(v), kInt32Buffer).c_str());
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
    if (s == nullptr)
        return;
    LibString text(s);
    text.Concat(buffer);
    *this = text;
}

void LibString::Insert(const int& pos, const char* s)
{
    const std::string_view text = View();
    if (s == nullptr)
        return;
    if (text.empty()) {
        *this = s;
        return;
    }
    const bool exists = pos >= -1 && pos < static_cast<int64>(text.size());
    const size_t head = exists ? static_cast<size_t>(pos + 1) : text.size();
    const std::string inserted(s);
    const std::string tail(text.substr(head));
    CutAt(head);
    Concat(inserted.c_str());
    Concat(tail.c_str());
}

void LibString::Read(const char* path, const int32& lineSize)
{
    if (path == nullptr || lineSize < 2)
        return;
    FILE* file = fopen(path, "r");
    if (file == nullptr)
        return;
    const std::unique_ptr<char[]> line(new char[static_cast<size_t>(lineSize)]);
    while (fgets(line.get(), lineSize, file) != nullptr)
        Concat(line.get());
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
