#include "TextCoding.h"

void AppendUtf8(std::string& text, char32_t c)
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

size_t DecodeUtf8(std::string_view text, char32_t& c)
{
    const auto lead = static_cast<unsigned char>(text[0]);
    // No character begins with 0x80 to 0xc1: those are the middle of one, or would be an ASCII
    // letter in two bytes (RFC 3629).
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
    // A letter in more bytes than it needs is refused: a check for "/" or NUL would not see it, and
    // who decodes it would.
    constexpr char32_t kLeast[] = { 0, 0, 0x80, 0x800, 0x10000 };
    // Halves of a pair in UTF-16 stand for nothing by themselves.
    const bool surrogate = c >= 0xd800 && c < 0xe000;
    return c < kLeast[length] || c > 0x10ffff || surrogate ? 0 : length;
}

char32_t NextCharacter(const char*& text, const char* end)
{
    if (static_cast<unsigned char>(*text) < 0x80) // nearly all that is drawn
        return static_cast<char32_t>(*text++);
    char32_t c = 0;
    const size_t length = DecodeUtf8({ text, static_cast<size_t>(end - text) }, c);
    text += length == 0 ? 1 : length;
    return length == 0 ? kReplacementCharacter : c;
}

std::string PercentEncoded(std::string_view path)
{
    // The letters that RFC 3986 leaves alone, and the slash between the parts.
    constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                        "0123456789/-._~";
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (kPlain.find(c) != kPlain.npos)
            text += c;
        else
            text += { '%', kDigits[byte >> 4], kDigits[byte & 15] };
    }
    return text;
}
