#include "foundation/Utf8.h"

#include <locale.h>
#include <wctype.h>

namespace {

// Characters that a terminal obeys instead of showing them, or that reorder what stands beside.
bool IsCommand(char32_t c)
{
    return c < 0x20 || (c >= 0x7f && c < 0xa0) || c == 0x61c || c == 0x200e || c == 0x200f
        || (c >= 0x2028 && c <= 0x202e) || (c >= 0x2066 && c <= 0x2069);
}

} // namespace

void LibAppendUtf8(std::string& text, char32_t c)
{
    const auto tail = [&text, c](
                          int shift) { text += static_cast<char>(0x80 | ((c >> shift) & 0x3f)); };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xc0 | (c >> 6));
        tail(0);
    } else if (c < 0x10000) {
        text += static_cast<char>(0xe0 | (c >> 12));
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xf0 | (c >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

size_t LibDecodeUtf8(std::string_view text, char32_t& c)
{
    const auto lead = static_cast<unsigned char>(text[0]);
    const size_t length = lead < 0x80 ? 1 : lead < 0xc2 ? 0 : lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
    if (length == 0 || lead > 0xf4 || text.size() < length)
        return 0;
    c = length == 1 ? lead : lead & (0xffu >> (length + 1));
    for (size_t i = 1; i < length; i++) {
        const auto next = static_cast<unsigned char>(text[i]);
        if ((next & 0xc0) != 0x80)
            return 0;
        c = (c << 6) | (next & 0x3fu);
    }
    constexpr char32_t kLeast[] = { 0, 0, 0x80, 0x800, 0x10000 };
    const bool surrogate = c >= 0xd800 && c < 0xe000;
    return c < kLeast[length] || c > 0x10ffff || surrogate ? 0 : length;
}

std::string_view LibCutUtf8(std::string_view text, size_t bytes)
{
    size_t end = bytes;
    while (end > 0 && end < text.size() && (text[end] & 0xc0) == 0x80)
        end--;
    return text.substr(0, end > 0 ? end : bytes);
}

std::string LibFoldCase(std::string_view text)
{
    // Every system has this locale; were it missing, letters beyond ASCII would keep their case.
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    std::string folded;
    folded.reserve(text.size());
    while (!text.empty()) {
        char32_t c = 0;
        const size_t length = LibDecodeUtf8(text, c);
        if (length == 0)
            folded += text[0];
        else if (c >= 'A' && c <= 'Z')
            folded += static_cast<char>(c - 'A' + 'a');
        else if (c < 0x80 || unicode == nullptr)
            folded += text.substr(0, length);
        else
            LibAppendUtf8(
                folded, static_cast<char32_t>(towlower_l(static_cast<wint_t>(c), unicode)));
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return folded;
}

std::string LibPrintable(const char* text, size_t most)
{
    constexpr char kDigits[] = "0123456789abcdef";
    std::string_view rest(text != nullptr ? text : "");
    rest = rest.substr(0, most);
    std::string shown;
    while (!rest.empty()) {
        char32_t c = 0;
        const size_t length = LibDecodeUtf8(rest, c);
        const std::string_view bytes = rest.substr(0, length == 0 ? 1 : length);
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
