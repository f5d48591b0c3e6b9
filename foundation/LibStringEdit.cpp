// What changes a LibString's text.
#include "foundation/LibString.h"
#include "foundation/PlainText.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr size_t kNone = std::string_view::npos;

// True if a name such as "O'Neil" goes on at index i: after an apostrophe that stands at the
// beginning of a word or behind its first letter. The "s" of "a's" ends a word.
bool IsNameAfterApostrophe(std::string_view text, size_t i)
{
    if (i < 2 || text[i - 1] != '\'' || text[i] == 's')
        return false;
    return LibIsSpace(text[i - 2]) || i == 2 || LibIsSpace(text[i - 3]);
}

bool IsProperCapital(std::string_view text, size_t i)
{
    if (i == 0)
        return true;
    const char before = text[i - 1];
    const char after = i + 1 < text.size() ? text[i + 1] : '\0';
    return LibIsSpace(before) || (before == '.' && after == '.') || before == '&'
        || (i == 1 && before == '\'') || IsNameAfterApostrophe(text, i);
}

} // namespace

template <class Predicate>
void LibString::RemoveIf(Predicate remove)
{
    if (buffer)
        *std::remove_if(buffer, buffer + View().size(), remove) = '\0';
}

// Ends the text at length if it is longer.
void LibString::CutAt(size_t length)
{
    if (length < View().size())
        buffer[length] = '\0';
}

size_t LibString::NthOf(char c, int32 n) const
{
    size_t found = View().find(c);
    for (; n > 0 && found != kNone; n--)
        found = View().find(c, found + 1);
    return n < 0 ? kNone : found;
}

void LibString::ToIndex(const int32& i)
{
    if (i >= -1)
        CutAt(static_cast<size_t>(static_cast<int64>(i) + 1));
}

void LibString::FromIndex(const int32& i)
{
    if (i < 0)
        CutAt(0);
    else
        ShiftFrom(0, i);
}

bool LibString::ToChar(const char& c, const int32& n, const int& delta)
{
    const size_t found = NthOf(c, n);
    if (found == kNone)
        return false;
    // In 64 bits: the sum of an index and any delta may be more than an int.
    CutAt(static_cast<size_t>(std::max<int64>(0, static_cast<int64>(found) + delta)));
    return true;
}

bool LibString::FromChar(const char& c, const int32& n, const int& delta)
{
    const size_t found = NthOf(c, n);
    if (found == kNone)
        return false;
    const int64 from = static_cast<int64>(found) + delta;
    // What is too large for an index becomes a bad one, which empties the text like any other.
    FromIndex(static_cast<int32>(std::clamp<int64>(from, -1, INT32_MAX)));
    return true;
}

void LibString::ToLast(const char& c, const int32& delta)
{
    const size_t found = View().rfind(c);
    const int64 to = static_cast<int64>(found) + delta;
    if (found != kNone && to >= -1)
        CutAt(static_cast<size_t>(to + 1));
}

void LibString::FromLast(const char& c, const int32& delta)
{
    const size_t found = View().rfind(c);
    const int64 from = static_cast<int64>(found) + delta;
    if (found != kNone)
        FromIndex(static_cast<int32>(std::clamp<int64>(from, -1, INT32_MAX)));
}

void LibString::RemoveChar(const int32& i)
{
    Remove(i, i);
}

void LibString::Remove(const int32& from, const int32& to)
{
    // No text has a byte of index INT32_MAX, so nothing is lost where 1 cannot be added.
    if (from >= 0 && to >= from)
        ShiftFrom(from, to < INT32_MAX ? to + 1 : to);
}

void LibString::ShiftFrom(const int32& dest, const int32& src)
{
    const size_t length = View().size();
    if (dest < 0 || src < 0)
        return;
    const auto from = std::min(static_cast<size_t>(src), length);
    const auto to = static_cast<size_t>(dest);
    if (to < from)
        // With the end mark.
        memmove(buffer + to, buffer + from, length - from + 1);
}

bool LibString::RemoveWord(const char* word)
{
    const std::string_view wanted = word ? word : "";
    const std::string_view text = View();
    for (size_t from = 0; from < text.size();) {
        const std::string_view rest = text.substr(from);
        const auto end = std::find_if(rest.begin(), rest.end(), LibIsSpace);
        const std::string_view found(rest.begin(), end);
        if (!found.empty() && found == wanted) {
            ShiftFrom(static_cast<int32>(from), static_cast<int32>(from + found.size()));
            return true;
        }
        from += found.size() + 1;
    }
    return false;
}

void LibString::RemoveAllWords(const char* word)
{
    const LibString wanted(word); // word may lie in the text that changes
    while (RemoveWord(wanted)) { }
}

void LibString::RemoveRepeatingChar(const char& c)
{
    if (!buffer)
        return;
    const auto repeats = [wanted = c](char a, char b) { return a == wanted && b == wanted; };
    *std::unique(buffer, buffer + View().size(), repeats) = '\0';
}

int32 LibString::Replace(const char* old, const char* with)
{
    const int32 found = Index(old);
    if (found < 0)
        return -1;
    const size_t removed = old ? strlen(old) : 0;
    return Splice(static_cast<size_t>(found), removed, with ? with : "") ? found : -1;
}

void LibString::ReplaceAll(const char* old, const char* with)
{
    const LibString searched(old); // both may lie in the text that changes
    const LibString inserted(with ? with : "");
    if (searched.View().empty() || !inserted.buffer)
        return;
    while (Replace(searched, inserted) >= 0) { }
}

void LibString::ReplaceAll(const char& a, const char& b)
{
    const char from = a; // copies, as a and b may be bytes of the text that changes
    const char to = b;
    std::replace(buffer, buffer + View().size(), from, to);
}

void LibString::SwapChar(const char& a, const char& b)
{
    // One way only, in spite of the name: b stays what it is.
    ReplaceAll(a, b);
}

void LibString::StripLeadingSpaces()
{
    const std::string_view text = View();
    const auto first = std::find_if_not(text.begin(), text.end(), LibIsSpace);
    ShiftFrom(0, static_cast<int32>(first - text.begin()));
}

void LibString::StripTrailingSpaces()
{
    const std::string_view text = View();
    const auto last = std::find_if_not(text.rbegin(), text.rend(), LibIsSpace);
    CutAt(static_cast<size_t>(text.rend() - last));
}

void LibString::StripAllSpaces()
{
    RemoveIf(LibIsSpace);
}

void LibString::StripLeadingChar(const char& c)
{
    const size_t first = View().find_first_not_of(c);
    FromIndex(first != kNone ? static_cast<int32>(first) : -1);
}

void LibString::StripTrailingChar(const char& c)
{
    CutAt(View().find_last_not_of(c) + 1); // none other: kNone + 1, which is 0
}

void LibString::StripPunct()
{
    RemoveIf([](char c) { return LibIsPunct(c) && c != '_'; });
}

void LibString::ToUpperCase()
{
    // Letters of ASCII only: a change to the bytes of other characters would tear them apart.
    std::transform(buffer, buffer + View().size(), buffer, LibToUpper);
}

void LibString::ToLowerCase()
{
    std::transform(buffer, buffer + View().size(), buffer, LibToLower);
}

void LibString::ToProperCase()
{
    ToLowerCase();
    const std::string_view text = View();
    for (size_t i = 0; i < text.size(); i++) {
        // From the left: that a word ends in "'s" is seen by an s that is not raised yet.
        if (IsProperCapital(text, i))
            buffer[i] = LibToUpper(buffer[i]);
    }
}

// The first byte of character n, at most the length of the text.
size_t LibString::CharOffset(int32 n) const
{
    const std::string_view text = View();
    int64 position = 0;
    uint32 length = 0;
    for (; n > 0 && position < static_cast<int64>(text.size()); n--)
        NextCharacter(text.data(), position, length);
    return std::min(static_cast<size_t>(position), text.size());
}

void LibString::CharToIndex(const int32& n)
{
    // Of a longer character the first byte alone stays: what is cut are bytes.
    if (n >= 0 && n < CharCount())
        CutAt(CharOffset(n) + 1);
}

void LibString::CharFromIndex(const int32& n)
{
    if (n >= 0 && n < CharCount())
        ShiftFrom(0, static_cast<int32>(CharOffset(n)));
}
