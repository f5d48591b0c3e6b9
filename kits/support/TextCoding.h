// How texts lie in bytes: as UTF-8 and, in URIs, percent coded.
#pragma once

#include <string>
#include <string_view>

constexpr char32_t kReplacementCharacter = 0xfffd;

// Appends the character c, at most 0x10ffff, to text.
void AppendUtf8(std::string& text, char32_t c);

// Decodes the character at the front of text, which is not empty, into c and returns its bytes; 0,
// and c undefined, if it is no valid UTF-8.
[[nodiscard]] size_t DecodeUtf8(std::string_view text, char32_t& c);

// Reads the character at text, which is before end, and moves text behind it. A byte that starts no
// valid character is passed over alone and read as the replacement character.
[[nodiscard]] char32_t NextCharacter(const char*& text, const char* end);

// A path as URIs and the records of the trash hold it: each byte but ASCII letters, digits and
// "/-._~" as "%" and two digits, "a b" as "a%20b".
[[nodiscard]] std::string PercentEncoded(std::string_view path);
