#include "foundation/Utf8.h"

#include <TextCoding.h>

#include <clocale>
#include <cwctype>

namespace {

// Characters that a terminal obeys instead of showing them, or that reorder what stands beside.
bool IsCommand(char32_t c)
{
    return c < 0x20 || (c >= 0x7f && c < 0xa0) || c == 0x61c || c == 0x200e || c == 0x200f
        || (c >= 0x2028 && c <= 0x202e) || (c >= 0x2066 && c <= 0x2069);
}

} // namespace

std::string_view LibCutUtf8(std::string_view text, size_t bytes)
{
    size_t end = bytes;
    while (end > 0 && end < text.size() && (text[end] & 0xc0) == 0x80)
        end--;
    // Nothing but bytes from the middle of characters: then it is no UTF-8 and is cut anywhere.
    return text.substr(0, end > 0 ? end : bytes);
}

std::string LibFoldCase(std::string_view text)
{
    // Every system has this locale; were it missing, letters beyond ASCII would keep their case.
    static const locale_t sUnicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    std::string folded;
    folded.reserve(text.size());
    while (!text.empty()) {
        char32_t c = 0;
        const size_t length = DecodeUtf8(text, c);
        if (length == 0)
            folded += text[0];
        else if (c >= 'A' && c <= 'Z')
            folded += static_cast<char>(c - 'A' + 'a');
        else if (c < 0x80 || !sUnicode)
            folded += text.substr(0, length);
        else
            AppendUtf8(folded, static_cast<char32_t>(towlower_l(static_cast<wint_t>(c), sUnicode)));
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return folded;
}

std::string LibPrintable(const char* text, size_t most)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string_view rest(text ? text : "");
    rest = rest.substr(0, most);
    std::string shown;
    while (!rest.empty()) {
        char32_t c = 0;
        const size_t length = DecodeUtf8(rest, c);
        const std::string_view bytes = rest.substr(0, length == 0 ? 1 : length);
        // Else a results file could colour, erase or turn round the line that speaks of it.
        if (length > 0 && !IsCommand(c)) {
            shown += bytes;
        } else {
            for (const char byte : bytes) {
                const auto value = static_cast<unsigned char>(byte);
                shown.append({ '\\', 'x', kDigits[value >> 4], kDigits[value & 15] });
            }
        }
        rest.remove_prefix(bytes.size());
    }
    return shown;
}
