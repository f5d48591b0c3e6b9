// What looks at a LibString's text and changes nothing.
#include "foundation/LibString.h"
#include "foundation/PlainText.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

const char* OrEmpty(const char* s)
{
    return s ? s : "";
}

bool IsSame(char a, char b, bool ignoreCase)
{
    return ignoreCase ? LibToUpper(a) == LibToUpper(b) : a == b;
}

bool IsSame(std::string_view a, std::string_view b, bool ignoreCase)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
        [ignoreCase](char x, char y) { return IsSame(x, y, ignoreCase); });
}

int32 CompareBytes(std::string_view a, std::string_view b, bool ignoreCase)
{
    const size_t common = std::min(a.size(), b.size());
    for (size_t i = 0; i < common; i++) {
        // Whatever char is: on some processors it has no sign, and lists would be sorted otherwise.
        const auto left = static_cast<signed char>(ignoreCase ? LibToUpper(a[i]) : a[i]);
        const auto right = static_cast<signed char>(ignoreCase ? LibToUpper(b[i]) : b[i]);
        if (left != right)
            return left < right ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

int32 ToIndexOrNone(size_t index)
{
    return index != std::string_view::npos ? static_cast<int32>(index) : -1;
}

} // namespace

int32 LibString::Compare(const char* s, const bool& ignoreCase) const
{
    return s ? CompareBytes(View(), s, ignoreCase) : 1;
}

int32 LibString::Compare(const LibString& s, const bool& ignoreCase) const
{
    return Compare(s.buffer, ignoreCase);
}

int32 LibString::CompareSub(
    const char* s, const bool& ignoreCase, const int32& count, const int32& start) const
{
    const std::string_view whole = View();
    const size_t first = std::min(static_cast<size_t>(std::max(start, 0)), whole.size());
    const std::string_view text = whole.substr(first);
    const size_t most = count < 0 ? std::string_view::npos : static_cast<size_t>(count);
    if (ignoreCase)
        return CompareBytes(
            text.substr(0, most), std::string_view(OrEmpty(s)).substr(0, most), true);
    // These take bytes for unsigned, Compare() and the form above for signed: the results differ
    // for texts beyond ASCII.
    return count < 0 ? strcmp(text.data(), OrEmpty(s)) : strncmp(text.data(), OrEmpty(s), most);
}

int32 LibString::CompareSub(
    const LibString& s, const bool& ignoreCase, const int32& count, const int32& start) const
{
    return CompareSub(s.buffer, ignoreCase, count, start);
}

bool LibString::BeginsWith(const char* s, const bool& ignoreCase) const
{
    const std::string_view wanted = OrEmpty(s);
    return !wanted.empty() && IsSame(View().substr(0, wanted.size()), wanted, ignoreCase);
}

bool LibString::BeginsWith(const LibString& s, const bool& ignoreCase) const
{
    return BeginsWith(s.buffer, ignoreCase);
}

bool LibString::EndsWith(const char* s, const bool& ignoreCase) const
{
    const std::string_view wanted = OrEmpty(s);
    const std::string_view text = View();
    return wanted.size() <= text.size()
        && IsSame(text.substr(text.size() - wanted.size()), wanted, ignoreCase);
}

bool LibString::EndsWith(const LibString& s, const bool& ignoreCase) const
{
    return EndsWith(s.buffer, ignoreCase);
}

bool LibString::Contain(const char* s, const bool& ignoreCase) const
{
    const std::string_view text = View();
    const std::string_view wanted = OrEmpty(s);
    const auto same = [ignoreCase](char a, char b) { return IsSame(a, b, ignoreCase); };
    return wanted.empty()
        || std::search(text.begin(), text.end(), wanted.begin(), wanted.end(), same) != text.end();
}

bool LibString::Contain(const LibString& s, const bool& ignoreCase) const
{
    return Contain(s.buffer, ignoreCase);
}

bool LibString::Contain(const char& c) const
{
    // Finds the end mark too: every text contains '\0'.
    return strchr(View().data(), c) != nullptr;
}

int32 LibString::Index(const char* s) const
{
    const std::string_view text = View();
    // In an empty text nothing is found, not even "", which is found at 0 in all others.
    return text.empty() ? -1 : ToIndexOrNone(text.find(OrEmpty(s)));
}

int32 LibString::Index(const LibString& s) const
{
    return Index(s.buffer);
}

int32 LibString::Index(const char& c) const
{
    return ToIndexOrNone(View().find(c));
}

int32 LibString::IndexOfAny(const char* set) const
{
    return ToIndexOrNone(View().find_first_of(OrEmpty(set)));
}

int32 LibString::Count(const char& c) const
{
    const std::string_view text = View();
    return static_cast<int32>(std::count(text.begin(), text.end(), c));
}

bool LibString::IsBlank() const
{
    const std::string_view text = View();
    return std::all_of(text.begin(), text.end(), LibIsSpace);
}

bool LibString::IsNumeric() const
{
    std::string_view text = View();
    if (text.starts_with('+') || text.starts_with('-'))
        text.remove_prefix(1);
    return std::count(text.begin(), text.end(), '.') <= 1
        && std::all_of(text.begin(), text.end(), [](char c) { return LibIsDigit(c) || c == '.'; });
}

int32 LibString::Words() const
{
    int32 words = 0;
    char before = ' ';
    for (const char c : View()) {
        words += LibIsSpace(before) && !LibIsSpace(c);
        before = c;
    }
    return words;
}

bool LibString::IsWildCard(const char* pattern) const
{
    return CompareWildCard(View().data(), pattern);
}

bool LibString::IsWildCard(const LibString& pattern) const
{
    return IsWildCard(pattern.buffer);
}

bool LibString::CompareWildCard(const char* text, const char* pattern) const
{
    text = OrEmpty(text);
    pattern = OrEmpty(pattern);
    // Only the last "*" can need another try, so this takes text times pattern steps at worst,
    // where a call for each "*" would take ever more with every one of them.
    const char* retryText = nullptr;
    const char* retryPattern = nullptr;
    while (*text != '\0') {
        if (*pattern == '*') {
            retryPattern = ++pattern;
            retryText = text;
        } else if (*pattern != '\0' && (*pattern == '?' || *pattern == *text)) {
            pattern++;
            text++;
        } else if (retryPattern) {
            pattern = retryPattern;
            text = ++retryText;
        } else {
            return false;
        }
    }
    while (*pattern == '*')
        pattern++;
    return *pattern == '\0';
}

bool LibString::Word(const int32& n, LibString& word) const
{
    const LibString text(*this); // word may be this string
    const std::string_view bytes = text.View();
    // Empty now: a caller that does not look at the result must not read the word of before.
    word.SetBuffer(static_cast<int32>(bytes.size()));
    int32 left = n;
    for (size_t i = 0; i < bytes.size() && left > 0; i++) {
        if (LibIsSpace(bytes[i]) || (i > 0 && !LibIsSpace(bytes[i - 1])) || --left > 0)
            continue;
        const std::string_view found = bytes.substr(i);
        const auto end = std::find_if(found.begin(), found.end(), LibIsSpace);
        word.SetText(std::string_view(found.begin(), end), bytes.size() + 1);
        return true;
    }
    return false;
}

LibString LibString::Extract(const int32& from, const int32& to) const
{
    const std::string_view text = View();
    if (from < 0 || from > to || to >= static_cast<int64>(text.size()))
        return LibString();
    LibString result;
    result.SetText(text.substr(static_cast<size_t>(from)), static_cast<size_t>(to - from) + 2);
    return result;
}

LibString LibString::Extract(const char& open, const char& close, const bool& strip) const
{
    const std::string_view text = View();
    const size_t from = text.find(open);
    // From the next byte on: both may be the same character.
    const size_t to = from != text.npos ? text.find(close, from + 1) : text.npos;
    if (to == text.npos)
        return LibString();
    const int32 inset = strip ? 1 : 0;
    // With nothing between the two the first index is behind the last, which gives "".
    return Extract(static_cast<int32>(from) + inset, static_cast<int32>(to) - inset);
}

void LibString::NextCharacter(const char* text, int64& position, uint32& length) const
{
    if (!text)
        return;
    const auto byte = static_cast<uint8>(text[position]);
    // A byte from the middle of a character, which has a single leading 1, counts as two bytes.
    length = byte < 0x80 ? 1 : static_cast<uint32>(std::max(2, std::countl_one(byte)));
    position += length;
}

int32 LibString::CharCount() const
{
    const std::string_view text = View();
    int64 position = 0;
    uint32 length = 0;
    int32 count = 0;
    do {
        count++;
        NextCharacter(text.data(), position, length);
    } while (position < static_cast<int64>(text.size()));
    return count;
}
