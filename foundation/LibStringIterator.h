// A text that hands out its fields one after the other:
//
//     LibStringIterator line("a\tb\tcd");
//     while (line.GetNextField('\t', field)) ...   // "a", "b", "cd"
//
// A last field of a single character, and what GetNextField gives after the last field, come with
// false: who needs them looks at the field even then.
#pragma once

#include "foundation/LibString.h"

class LibStringIterator : public LibString {
public:
    LibStringIterator() = default; // reading begins at index 0
    LibStringIterator(const char* s) : LibString(s) { }
    LibStringIterator(const LibString& s) : LibString(s) { }
    explicit LibStringIterator(const int& n) : LibString(n) { } // "", with room for n bytes
    LibStringIterator(const LibStringIterator& other) = default; // reads on where other would

    // A new text is read from its beginning; assigned to itself, nothing happens. A null s leaves
    // the text, which is then read from its beginning.
    LibStringIterator& operator=(const char* s);
    LibStringIterator& operator=(const LibString& s);
    LibStringIterator& operator=(const LibStringIterator& other); // reads on where other would

    // The text as LibString prints it, then "position n", on standard error.
    void PrintToStream() const override;

    // The next field begins at index pos. Outside the text it counts as the nearer end.
    void Reset(const int& pos) { position = pos; }
    // The index at which the next field begins.
    int32 Position() const { return position; }

    // Sets field to the text up to the next delimiter, which is skipped; true. If there is none
    // left, field is the rest of the text: true for a rest of two characters or more, of which
    // only the last is read again; false for a shorter one, which stays to be read.
    bool GetNextField(const char& delimiter, LibString& field);
    // The same with any character of delimiters. The rest of the text comes with false and stays
    // to be read.
    bool GetNextField(const char* delimiters, LibString& field);
    // Sets field to the field of that index, from 0, of those which come with true. False, and
    // field as it was, if there are not so many. Reading goes on after the last field looked at.
    bool GetIndexField(const char& delimiter, const int32& index, LibString& field);

protected:
    int32 position = 0;

private:
    // The text from position on.
    std::string_view Rest() const;
    // Ends a field of that length, taken from Rest, at a delimiter.
    void TakeField(size_t length, LibString& field);
};
