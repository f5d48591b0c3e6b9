#include "UnwindCheck.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <unwind.h>

// The compilers leave a table of call sites with each function that has something to do when it is
// unwound, in the language-specific data area. A call that may let nothing through is left out of
// it (GCC) or has a handler for everything (Clang), as a call inside catch (...) has with both.
// Layout: "Itanium C++ ABI: Exception Handling", level II; encodings: Linux Standard Base.
namespace {
enum Encoding : uint8_t {
    kUleb128 = 0x01,
    kUdata2 = 0x02,
    kUdata4 = 0x03,
    kUdata8 = 0x04,
    kFormat = 0x07, // the bits of the above, signed ones included
    kOmit = 0xff,
};

class TableReader {
public:
    explicit TableReader(const uint8_t* data) : fNext(data) { }

    uint8_t Byte() { return *fNext++; }
    const uint8_t* Position() const { return fNext; }

    uint64_t Uleb128()
    {
        uint64_t value = 0;
        ReadLeb128(value);
        return value;
    }

    int64_t Sleb128()
    {
        uint64_t value = 0;
        const int bits = ReadLeb128(value);
        if (bits < 64 && value >> (bits - 1) & 1)
            value |= ~uint64_t { 0 } << bits;
        return static_cast<int64_t>(value);
    }

    // The value of a call site; fails on a form that no compiler used here writes.
    bool Offset(uint8_t encoding, uint64_t& value)
    {
        switch (encoding) {
            case kUleb128: value = Uleb128(); return true;
            case kUdata2: value = Fixed<uint16_t>(); return true;
            case kUdata4: value = Fixed<uint32_t>(); return true;
            case kUdata8: value = Fixed<uint64_t>(); return true;
            default: return false;
        }
    }

private:
    int ReadLeb128(uint64_t& value)
    {
        int bits = 0;
        for (uint8_t byte = 0x80; byte & 0x80; bits += 7) {
            byte = Byte();
            if (bits < 64)
                value |= static_cast<uint64_t>(byte & 0x7f) << bits;
        }
        return bits;
    }

    template <typename Type>
    Type Fixed()
    {
        Type value;
        memcpy(&value, fNext, sizeof(value));
        fNext += sizeof(value);
        return value;
    }

    const uint8_t* fNext;
};

struct CallSites {
    const uint8_t* first;
    const uint8_t* end; // and start of the actions
    const uint8_t* typesEnd; // they are counted backwards from here
    uint8_t encoding;
    uint8_t typeEncoding;
};

// False for a table in a form that no compiler used here writes.
bool ReadHeader(const uint8_t* table, CallSites& sites)
{
    TableReader reader(table);
    if (reader.Byte() != kOmit) // landing pads are counted from elsewhere
        return false;
    sites.typesEnd = nullptr;
    sites.typeEncoding = reader.Byte();
    if (sites.typeEncoding != kOmit) {
        const uint64_t distance = reader.Uleb128();
        sites.typesEnd = reader.Position() + distance;
    }
    sites.encoding = reader.Byte();
    const uint64_t length = reader.Uleb128();
    sites.first = reader.Position();
    sites.end = sites.first + length;
    return true;
}

// Whether the handlers of a call site, action being the distance of the first plus one, include one
// for everything: its type is null.
bool HandlesAll(const CallSites& sites, uint64_t action)
{
    if (action == 0 || !sites.typesEnd)
        return false;
    const uint8_t form = sites.typeEncoding & kFormat;
    const ptrdiff_t size = form == kUdata2 ? 2 : form == kUdata4 ? 4 : 8;
    const uint8_t* position = sites.end + (action - 1);
    for (;;) {
        TableReader reader(position);
        const int64_t type = reader.Sleb128();
        position = reader.Position();
        const uint64_t none = 0;
        if (type > 0 && memcmp(sites.typesEnd - type * size, &none, static_cast<size_t>(size)) == 0)
            return true;
        const int64_t next = reader.Sleb128();
        if (next == 0)
            return false;
        position += next;
    }
}

// Whether the call at this offset from the function's start lets through what unwinds it.
bool LetsThrough(const uint8_t* table, uint64_t offset)
{
    CallSites sites;
    if (!ReadHeader(table, sites))
        return true;
    for (TableReader reader(sites.first); reader.Position() < sites.end;) {
        uint64_t start, size, landingPad;
        if (!reader.Offset(sites.encoding, start) || !reader.Offset(sites.encoding, size)
            || !reader.Offset(sites.encoding, landingPad))
            return true;
        const uint64_t action = reader.Uleb128();
        if (offset >= start && offset < start + size)
            return !HandlesAll(sites, action);
    }
    return false;
}

_Unwind_Reason_Code LookAtFrame(_Unwind_Context* context, void* canBeUnwound)
{
    const auto* table = static_cast<const uint8_t*>(_Unwind_GetLanguageSpecificData(context));
    if (!table)
        return _URC_NO_REASON;
    int isBeforeCall = 0;
    uint64_t address = _Unwind_GetIPInfo(context, &isBeforeCall);
    if (!isBeforeCall)
        address--; // of the call, not of what follows it
    if (LetsThrough(table, address - _Unwind_GetRegionStart(context)))
        return _URC_NO_REASON;
    *static_cast<bool*>(canBeUnwound) = false;
    return _URC_END_OF_STACK;
}
} // namespace

namespace kernel {
bool StackCanBeUnwound()
{
    bool canBeUnwound = true;
    _Unwind_Backtrace(LookAtFrame, &canBeUnwound);
    return canBeUnwound;
}
} // namespace kernel
