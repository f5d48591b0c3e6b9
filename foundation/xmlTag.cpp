#include "foundation/xmlParser.h"

#include <cstdio>
#include <memory>
#include <vector>

namespace {

const char* TextOf(const LibString& string)
{
    const char* text = string;
    return text ? text : "";
}

} // namespace

xmlTag& xmlTag::operator=(const xmlTag& other)
{
    if (this == &other)
        return *this;
    name = other.name;
    content = other.content;
    parentLocation = other.parentLocation;
    modifiers = other.modifiers;
    // Before the own elements go, one of which other may be.
    std::vector<std::unique_ptr<xmlTag>> copies;
    for (const xmlTag& child : other.children)
        copies.push_back(std::make_unique<xmlTag>(child));
    children.Clear();
    for (auto& copy : copies)
        children.Insert(std::move(copy));
    return *this;
}

bool xmlTag::operator==(const xmlTag& other) const
{
    return name.Compare(other.name) == 0;
}

bool xmlTag::operator>(const xmlTag& other) const
{
    return name.Compare(other.name) > 0;
}

void xmlTag::SetName(const char* newName)
{
    name = newName;
}

void xmlTag::Clear()
{
    name = "";
    content = "";
    modifiers.Clear();
    children.Clear();
}

bool xmlTag::Accepts(const char& c, const bool& isEmpty)
{
    // In front of the content blanks and tabs are the indentation of the file.
    return !isEmpty || (c != ' ' && c != '\t');
}

void xmlTag::AddContent(const char& c)
{
    if (Accepts(c, *TextOf(content) == '\0'))
        content.Concat(c);
}

void xmlTag::StripTrailingContent()
{
    content.StripTrailingSpaces();
}

void xmlTag::AddChild(xmlTag& child)
{
    children.Insert(std::make_unique<xmlTag>(child));
}

xmlTag* xmlTag::AddChild()
{
    return children.Insert(std::make_unique<xmlTag>());
}

void xmlTag::SetParentLocation(const int32& location)
{
    parentLocation = location;
}

void xmlTag::PrintToStream() const
{
    fprintf(stderr, "xmlTag: <%s>\n", TextOf(name));
    fprintf(stderr, "\tcontents <%s>\n", TextOf(content));
    fprintf(stderr, "\tParent Local : %d\n", parentLocation);
    modifiers.PrintToStream();
    for (const xmlTag& child : children)
        child.PrintToStream();
}
