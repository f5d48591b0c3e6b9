// Characters and numbers as text by the "C" locale, the same bytes everywhere. <cctype> and printf
// follow the desktop's locale: there a text could be cut, folded or read differently on two
// machines.
#pragma once

#include <SupportDefs.h>

#include <algorithm>
#include <string>
#include <string_view>

// True for blank, tab, line feed, vertical tab, form feed and carriage return.
constexpr bool LibIsSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

// True for '0' to '9'.
constexpr bool LibIsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// True for 'a' to 'z' and 'A' to 'Z'.
constexpr bool LibIsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// True for those too of which characters beyond ASCII consist: without them "März" would be cut
// after its "M".
constexpr bool LibIsWordByte(char c)
{
    return LibIsLetter(c) || static_cast<signed char>(c) < 0;
}

// The upper-case letter of 'a' to 'z', any other byte as it is.
constexpr char LibToUpper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// The lower-case letter of 'A' to 'Z', any other byte as it is.
constexpr char LibToLower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// True for the visible characters that are neither letter nor digit, "_" included.
constexpr bool LibIsPunct(char c)
{
    return c > ' ' && c < '\x7f' && !LibIsDigit(c) && !LibIsLetter(c);
}

// What printf gives for "%.*f" in the "C" locale: decimals digits after the point, six if
// decimals is negative, never more than 1100 (a double has no further ones but zeros); "inf",
// "nan" and their negatives for what is no number.
[[nodiscard]] std::string LibFixedText(double value, int decimals);

// As few digits as tell the number from all others, with an exponent where that is shorter.
[[nodiscard]] std::string LibShortestText(double value);

// The number that text begins with: sign, digits, point, digits, no exponent. 0 where there is
// none; plus or minus infinity where it is too large.
[[nodiscard]] double LibFixedValue(std::string_view text);

// Arithmetic on 32-bit fields that come from outside is done in 64 bits and brought back here: the
// value, or the nearest end of the range of int32.
constexpr int32 LibToInt32(int64 value)
{
    return static_cast<int32>(std::clamp<int64>(value, INT32_MIN, INT32_MAX));
}
