// A reader of small XML files that are written by hand, tag by tag from front to back:
//
//     xmlParser parser("help.xml");
//     xmlTag topic;
//     while (parser.FindTag("topic", topic)) ...
//
// It knows elements, attributes and text, and skips declarations, comments and document types.
// References such as "&lt;" stay as they are, an element that is never closed reaches to the end of
// the file, a closing tag that fits nothing is passed over. Lines, which end in "\n" or "\r\n", are
// joined in a text with nothing in between; inside a tag a line end counts as a blank.
//
// What no hand writes is bounded: 100 levels and 100,000 elements in one FindTag, 1000 attributes
// of a tag, 1 GB of text. What is beyond is left out, with a line on standard error, as is what
// cannot be read.
#pragma once

#include "foundation/LibString.h"
#include "foundation/LinkList.h"

#include <Message.h>

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

// The attributes of a tag: a message with one string field for each, named as the attribute is.
class xmlTagModifiers : public BMessage {
public:
    // Takes away all attributes.
    void Clear() { MakeEmpty(); }
};

// One element of an XML file: its name, attributes and text, and the elements inside it, which it
// owns. Tags are equal, and ordered, by their names.
class xmlTag {
public:
    xmlTag() = default;
    xmlTag(const xmlTag& other) { *this = other; }
    virtual ~xmlTag() = default;
    // Copies the elements inside too, which moves other's cursor over them. other may lie inside
    // this tag.
    xmlTag& operator=(const xmlTag& other);

    bool operator==(const xmlTag& other) const;
    bool operator>(const xmlTag& other) const;

    void SetName(const char* newName); // null: nothing changes
    // Takes away name, text, attributes and elements.
    void Clear();
    // Whether c belongs to a text that so far is empty or not: blanks and tabs at its front do not.
    static bool Accepts(const char& c, const bool& isEmpty);
    // Appends c to the text if it belongs to it.
    void AddContent(const char& c);
    // Takes the white space off the end of the text.
    void StripTrailingContent();
    // Appends a copy of child, or an empty element, which is returned and stays the tag's.
    void AddChild(xmlTag& child);
    xmlTag* AddChild();
    // Where the element begins: the length that the text of the one around it had so far.
    void SetParentLocation(const int32& location);
    // Name, text and location, on standard error, the attributes (on standard output, as messages
    // are printed) and every element inside.
    void PrintToStream() const;

    LibString name;
    LibString content;
    int32 parentLocation = 0;
    mutable LinkList<xmlTag> children; // walking, also to read, moves the list's own cursor
    xmlTagModifiers modifiers;
};

class xmlParser {
public:
    static constexpr int kLineLength = 1024;
    static constexpr int kNameSize = 1024; // bytes of a tag's name, end mark included

    xmlParser() = default;
    explicit xmlParser(const char* path); // see Open()
    virtual ~xmlParser();
    xmlParser(const xmlParser&) = delete;
    xmlParser& operator=(const xmlParser&) = delete;

    // Closes what is open and opens the file at path. False, with a line on standard error, if that
    // fails; then there is nothing to be found.
    bool Open(const char* path);
    void Close();
    // Starts reading from the beginning again, at line 0 and column 0.
    void Rewind();
    // Whether a file is open.
    bool IsValid() const { return file != nullptr; }

    // Takes the next line, or the next kLineLength bytes of a longer one, into the buffer, at
    // column 0. False at the end of the file, or without one.
    bool ReadLine();
    // Moves to the next character, reading lines as needed. False at the end of the file.
    bool Advance();
    // True for blank and tab.
    bool IsWhiteSpace(const char& c) const { return c == ' ' || c == '\t'; }

    // Reads the name of the next tag, as it stands after its "<", into name, which has room for
    // kNameSize bytes; a longer one is cut. hasModifiers tells whether attributes may follow, on
    // which the parser then stands. A comment's name is "!--". False, and name "", at the end of
    // the file.
    bool NextTag(char* name, bool& hasModifiers);
    // Adds the attributes from here to the ">" of the tag, on which the parser then stands. One
    // without "=" has the value "".
    void AddModifiers(xmlTagModifiers& modifiers);
    // Reads the next element of that name, found at any depth from here on, into tag. False, and
    // tag empty, if there is none up to the end of the file.
    bool FindTag(const char* name, xmlTag& tag);

    // Whether a tag is passed over inside an element: declaration, comment and document type.
    virtual bool SkipTag(const char* name) const;
    // Whether a tag has no closing tag, and so no content: the same ones.
    virtual bool NoAnchorTag(const char* name) const;

    // "xmlParser: line n, column n" and the buffer on standard error.
    void PrintToStream() const;

protected:
    void Init();

    FILE* file = nullptr;
    int32 line = 0; // lines read so far
    int32 column = 0; // of the current character in buffer
    char buffer[kLineLength + 1] = "";
    char saved = '\0'; // '/' after a tag that closes itself

private:
    // An element that is being read; its text is gathered here because LibString grows by copying.
    struct OpenElement {
        xmlTag* tag;
        std::string text;
    };

    bool AdvanceInTag(char& c);
    bool ReadName(char* name, bool& hasModifiers);
    bool ReadAttribute(xmlTagModifiers& modifiers, char& c);
    bool ReadValue(std::string& value, char& c);
    void StripSlash(std::string& text, const char& c);
    void AddModifier(xmlTagModifiers& modifiers, const std::string& name, const std::string& value);
    bool ReadAttributes(char* name, const bool& hasModifiers, xmlTagModifiers& modifiers);
    void ReadBody(xmlTag& tag);
    void ReadText(std::string& text);
    void ReadMarkup(std::vector<OpenElement>& open);
    void ReadChild(std::vector<OpenElement>& open, char* name, const bool& hasModifiers);
    void CloseElement(std::vector<OpenElement>& open);
    void SkipMarkup(const char* name);
    void SkipElement(const char* name);
    void AddText(std::string& text, std::string_view added);
    bool Within(const size_t& count, const size_t& limit, const char* what);

    bool endsLine = true; // the buffer holds the last piece of its line
    bool complained = false; // about one of the bounds
    size_t elements = 0; // read in this FindTag
    size_t attributes = 0; // of the current tag
};
