// The program's text: an owned buffer of single bytes that ends in NUL, edited in place. Growth is
// exact, never ahead: who builds a long text makes it with LibString(n) first.
//
// Indices count bytes from 0; bytes are classed as in the "C" locale; only the Char... operations
// and NextCharacter know UTF-8. After Clear(), or made from a null pointer, a LibString has no
// buffer: it converts to a null pointer and is otherwise an empty text. A null text given to an
// operation changes nothing or counts as empty. A text given may lie in this string's own buffer.
//
// A text has at most 2,147,483,646 bytes. An operation that would make it longer, or for which
// there is no memory, is refused: a line on standard error says so, and the string is as it was.
#pragma once

#include <SupportDefs.h>

#include <string_view>

class BFont;
class BRect;

class LibString {
public:
    LibString(); // ""
    explicit LibString(const int32& n); // "", with room for n bytes
    LibString(const char* s); // no buffer if s is null
    LibString(const LibString& o);
    virtual ~LibString();

    // The text itself, valid until the next change; null if there is no buffer.
    virtual operator const char*() const { return buffer; }
    virtual operator char*() const { return buffer; }
    // "LibString:: <text>, buffer size" on standard error.
    virtual void PrintToStream() const;

    // Empties the text and gives it room for n bytes.
    void SetBuffer(const int32& n);
    // Gives the buffer back: the string converts to null from then on.
    void Clear();
    // Assigned from another string, this one gets the other's room, not only its text.
    LibString& operator=(const LibString& o);
    LibString& operator=(const char* s); // null: nothing changes
    // Numbers: "%d", "%f", "%.*f", in every locale with a point. A float is cut to 10 bytes, a
    // double to 15.
    LibString& operator=(const int32& v);
    LibString& operator=(const float& v);
    LibString& operator=(const double& v);
    void SetFloat32(const float& v, const int& decimals);
    void SetFloat64(const double& v, const int& decimals);
    // Two upper-case hexadecimal digits.
    void SetHex(const uint8& v);
    // As printf, cut to 511 bytes.
    [[gnu::format(printf, 2, 3)]] void Formatted(const char* format, ...);
    // The bytes that the text takes when flattened: a length of four bytes, then the text.
    int32 PackSize() const;

    // Append; the result is the buffer, which only grows if the text does not fit; null if refused.
    char* Concat(const char* s);
    char* Concat(const char& c);
    LibString& operator+=(const int32& v); // as the assignments, cut alike
    LibString& operator+=(const float& v);
    LibString& operator+=(const double& v);
    // Puts s in front of the text.
    void PrePend(const char* s);
    // Puts s after the byte at index pos, so -1 puts it in front. Appends it if there is no such
    // byte.
    void Insert(const int& pos, const char* s);
    // Appends the file at path, read in pieces of lineSize bytes (2 or more). A file that cannot be
    // opened changes nothing; one that cannot be read to its end is named on standard error.
    void Read(const char* path, const int32& lineSize);

    // -1, 0 or 1, bytes compared as signed numbers, the beginning of a text being smaller than the
    // whole. 1 if s is null.
    int32 Compare(const char* s, const bool& ignoreCase = false) const;
    int32 Compare(const LibString& s, const bool& ignoreCase = false) const;
    // Compares at most count bytes (-1: all) from index start on: below 0, 0 or above 0.
    int32 CompareSub(const char* s, const bool& ignoreCase = false, const int32& count = -1,
        const int32& start = 0) const;
    int32 CompareSub(const LibString& s, const bool& ignoreCase = false, const int32& count = -1,
        const int32& start = 0) const;
    // The text begins with "" never and ends with "" always.
    bool BeginsWith(const char* s, const bool& ignoreCase = false) const;
    bool BeginsWith(const LibString& s, const bool& ignoreCase = false) const;
    bool EndsWith(const char* s, const bool& ignoreCase = false) const;
    bool EndsWith(const LibString& s, const bool& ignoreCase = false) const;
    bool Contain(const char* s, const bool& ignoreCase = false) const;
    bool Contain(const LibString& s, const bool& ignoreCase = false) const;
    bool Contain(const char& c) const;
    // The first index of s, of c, of any byte of set; -1 if there is none.
    int32 Index(const char* s) const;
    int32 Index(const LibString& s) const;
    int32 Index(const char& c) const;
    int32 IndexOfAny(const char* set) const;
    int32 Count(const char& c) const;
    // True if there is nothing but white space.
    bool IsBlank() const;
    // True for digits with at most one "." among them and at most one sign in front, and for "".
    bool IsNumeric() const;
    // The number of words: runs without white space.
    int32 Words() const;
    // True if the whole text fits the pattern: "?" is any one byte, "*" any run of them.
    bool IsWildCard(const char* pattern) const;
    bool IsWildCard(const LibString& pattern) const;
    bool CompareWildCard(const char* text, const char* pattern) const;

    // Keeps the bytes 0 to i; -1 empties the text, a bad index changes nothing.
    void ToIndex(const int32& i);
    // Keeps the bytes from i on; a bad index empties the text.
    void FromIndex(const int32& i);
    // With p the index of the n-th c (from 0): ends the text in front of index p + delta. False,
    // and nothing changes, if there are not so many.
    bool ToChar(const char& c, const int32& n, const int& delta);
    // The same, keeping the bytes from p + delta on; a bad index empties the text.
    bool FromChar(const char& c, const int32& n, const int& delta);
    // With p the index of the last c: ToIndex(p + delta) and FromIndex(p + delta). Without a c
    // nothing changes.
    void ToLast(const char& c, const int32& delta);
    void FromLast(const char& c, const int32& delta);
    // The bytes from to to inclusive; "" if they are not all there.
    LibString Extract(const int32& from, const int32& to) const;
    // From the first open to the next close, both left out if strip; "" if one is missing.
    LibString Extract(const char& open, const char& close, const bool& strip) const;
    // Sets word to the n-th word (from 1); false, and word "", if there are not so many.
    bool Word(const int32& n, LibString& word) const;

    void RemoveChar(const int32& i); // a bad index changes nothing
    // Removes the bytes from to to inclusive, as many as there are.
    void Remove(const int32& from, const int32& to);
    // Moves the bytes from src to the end down to dest, where the text then ends after them. Does
    // nothing if dest is negative, after src or after the end.
    void ShiftFrom(const int32& dest, const int32& src);
    // Removes the first word, or all, equal to word; the white space around stays. True if there
    // was one.
    bool RemoveWord(const char* word);
    void RemoveAllWords(const char* word);
    // Leaves one c of every run.
    void RemoveRepeatingChar(const char& c);
    // Replaces the first old and returns its index, -1 if there is none or it is refused.
    int32 Replace(const char* old, const char* with);
    // Replace until there is no old left: with must not contain old. An empty old changes nothing.
    void ReplaceAll(const char* old, const char* with);
    void ReplaceAll(const char& a, const char& b);
    void SwapChar(const char& a, const char& b); // as ReplaceAll(a, b)
    void StripLeadingSpaces();
    void StripTrailingSpaces();
    void StripAllSpaces();
    void StripLeadingChar(const char& c);
    void StripTrailingChar(const char& c);
    void StripPunct(); // "_" stays
    void ToUpperCase();
    void ToLowerCase();
    // Words begin with a capital, also after "&" and between dots ("U.S.A."), after an apostrophe
    // only in names such as "O'Neil".
    void ToProperCase();
    // Shortens a text of width pixels or more until it ends in "..." and is narrower. rect becomes
    // 0 to the width of what was kept before the dots; its top and bottom stay.
    void Truncate(const BFont& font, const int& width, BRect& rect);

    // The text as a number (strtol, strtod), narrowed to the type. False, and value 0, unless
    // IsNumeric. A decimal part is cut off.
    bool GetInt8(int8& value) const;
    bool GetUint8(uint8& value) const;
    bool GetInt16(int16& value) const;
    bool GetUint16(uint16& value) const;
    bool GetInt32(int32& value) const;
    bool GetUint32(uint32& value) const;
    bool GetFloat32(float& value) const;
    bool GetFloat64(double& value) const;
    // The value of a text of two hexadecimal digits, 0 if it has another length.
    uint8 GetHex() const;
    // 0 to 15; 0 also for what is no hexadecimal digit.
    int HexValue(const char& c) const;

    // Sets length to the bytes of the UTF-8 character at position, by its first byte alone, and
    // moves position past it, which can be past the end of a cut text.
    void NextCharacter(const char* text, int64& position, uint32& length) const;
    int32 CharCount() const; // 1 for ""
    // ToIndex of the first byte of character n; a bad n changes nothing.
    void CharToIndex(const int32& n);
    // Keeps the characters from n on; a bad n changes nothing.
    void CharFromIndex(const int32& n);

protected:
    std::string_view View() const { return buffer ? buffer : ""; }
    // Puts text into a new buffer of capacity bytes, cut to what fits with its end mark.
    void SetText(std::string_view text, size_t capacity);

    char* buffer = nullptr;
    int32 size = 0; // bytes of buffer, end mark included

private:
    bool Splice(size_t from, size_t removed, std::string_view with);
    void CutAt(size_t length);
    size_t CharOffset(int32 n) const;
    size_t NthOf(char c, int32 n) const;
    template <class Predicate>
    void RemoveIf(Predicate remove);
};
