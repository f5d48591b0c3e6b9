// One element of an XML file: its name, attributes and text, and the elements inside it, which it
// owns. Tags are equal, and ordered, by their names.
#pragma once

#include "foundation/LibString.h"
#include "foundation/LinkList.h"
#include "foundation/xmlTagModifiers.h"

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
