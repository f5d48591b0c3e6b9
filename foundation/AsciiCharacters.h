// The character classes of the "C" locale, one byte at a time. <cctype> follows the desktop's
// locale: there a text could be cut or folded differently on two machines.
#pragma once

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
    const char upper = LibToUpper(c);
    return c > ' ' && c < '\x7f' && !LibIsDigit(c) && !(upper >= 'A' && upper <= 'Z');
}
