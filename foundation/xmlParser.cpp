#include "foundation/xmlParser.h"

#include "foundation/PlainText.h"
#include "foundation/Utf8.h"

#include <cerrno>
#include <cstring>

namespace {

// Far more than any help file has. A damaged or hostile one must not fill the memory, nor, by tags
// one inside the other that are deleted by recursion, the stack.
constexpr size_t kMostLevels = 100;
constexpr size_t kMostElements = 100000;
constexpr size_t kMostAttributes = 1000;
constexpr size_t kMostSize = size_t { 1 } << 30;
constexpr char kComment[] = "!--";

// Cuts the "/" off the end of a name such as "br/" and tells whether there was one.
bool CutSlash(char* name)
{
    const size_t length = strlen(name);
    if (length < 2 || name[0] == '/' || name[length - 1] != '/')
        return false;
    name[length - 1] = '\0';
    return true;
}

bool IsEqual(const LibString& string, const char* text)
{
    return string.Compare(text) == 0;
}

} // namespace

xmlParser::xmlParser(const char* path)
{
    Open(path);
}

xmlParser::~xmlParser()
{
    Close();
}

void xmlParser::Init()
{
    line = 0;
    column = 0;
    buffer[0] = '\0';
    endsLine = true;
    complained = false;
}

bool xmlParser::Open(const char* path)
{
    Close();
    file = path ? fopen(path, "r") : nullptr;
    if (!IsValid())
        fprintf(stderr, "Unable to open <%s>: %s\n", path ? path : "", strerror(errno));
    return IsValid();
}

void xmlParser::Close()
{
    if (file)
        fclose(file);
    file = nullptr;
    Init();
}

void xmlParser::Rewind()
{
    if (file)
        rewind(file);
    Init();
}

bool xmlParser::ReadLine()
{
    column = 0;
    endsLine = true;
    if (!file || !fgets(buffer, sizeof(buffer), file)) {
        buffer[0] = '\0';
        const bool failed = file && ferror(file);
        if (failed && !complained)
            fprintf(stderr, "Error reading after line <%d>: %s\n", line, strerror(errno));
        complained = complained || failed;
        return false;
    }
    line = LibToInt32(int64 { line } + 1);
    size_t length = strlen(buffer);
    if (length > 0 && buffer[length - 1] == '\n') {
        buffer[--length] = '\0';
    } else if (length == kLineLength) {
        const int next = getc(file); // the line end of a line that just fits
        endsLine = next == '\n' || next == EOF;
        if (!endsLine)
            ungetc(next, file);
    }
    if (endsLine && length > 0 && buffer[length - 1] == '\r')
        buffer[length - 1] = '\0';
    return true;
}

bool xmlParser::Advance()
{
    if (buffer[column] != '\0')
        column++;
    while (buffer[column] == '\0') {
        if (!ReadLine())
            return false;
    }
    return true;
}

// The same inside a tag: the line end is a blank there, for which the column stays behind the last
// character.
bool xmlParser::AdvanceInTag(char& c)
{
    const bool endsPiece = buffer[column] != '\0' && buffer[column + 1] == '\0';
    if (endsPiece && endsLine) {
        column++;
        c = ' ';
        return true;
    }
    if (endsPiece) {
        const bool more = ReadLine(); // of which nothing may be left but its end
        c = more && buffer[0] == '\0' ? ' ' : buffer[0];
        return more;
    }
    const bool more = Advance();
    c = buffer[column];
    return more;
}

// Reads the name after the "<" on which the parser stands. False if there is none.
bool xmlParser::ReadName(char* name, bool& hasModifiers)
{
    size_t length = 0;
    char c = '\0';
    hasModifiers = false;
    while (!hasModifiers && AdvanceInTag(c) && c != '>') {
        hasModifiers = IsWhiteSpace(c);
        if (!hasModifiers && length < kNameSize - 1)
            name[length++] = c;
        name[length] = '\0';
        if (strcmp(name, kComment) == 0) // its text need not begin with a blank
            hasModifiers = true;
    }
    name[length] = '\0';
    return length > 0;
}

bool xmlParser::NextTag(char* name, bool& hasModifiers)
{
    name[0] = '\0';
    hasModifiers = false;
    do {
        while (buffer[column] != '<') {
            if (!Advance())
                return false;
        }
    } while (!ReadName(name, hasModifiers));
    return true;
}

void xmlParser::AddModifiers(xmlTagModifiers& modifiers)
{
    attributes = 0;
    saved = '\0';
    char c = buffer[column] != '\0' ? buffer[column] : ' ';
    while (c != '>') {
        if (!(IsWhiteSpace(c) ? AdvanceInTag(c) : ReadAttribute(modifiers, c)))
            return;
    }
}

// Reads the attribute that begins with c; c becomes the character after it.
bool xmlParser::ReadAttribute(xmlTagModifiers& modifiers, char& c)
{
    std::string name;
    std::string value;
    bool more = true;
    while (more && c != '=' && c != '>' && !IsWhiteSpace(c)) {
        name += c;
        more = AdvanceInTag(c);
    }
    if (more && c == '=')
        more = ReadValue(value, c);
    else
        StripSlash(name, c);
    AddModifier(modifiers, name, value);
    return more;
}

// Reads the value after the "=" that c is; c becomes the character after it.
bool xmlParser::ReadValue(std::string& value, char& c)
{
    bool more = AdvanceInTag(c);
    if (more && (c == '"' || c == '\'')) {
        const char quote = c;
        while (AdvanceInTag(c) && c != quote)
            value += c;
        return AdvanceInTag(c);
    }
    while (more && c != '>' && !IsWhiteSpace(c)) {
        value += c;
        more = AdvanceInTag(c);
    }
    StripSlash(value, c);
    return more;
}

// A "/" in front of the ">" that c is closes the tag and is no part of text.
void xmlParser::StripSlash(std::string& text, const char& c)
{
    if (c != '>' || !text.ends_with('/'))
        return;
    text.pop_back();
    saved = '/';
}

void xmlParser::AddModifier(
    xmlTagModifiers& modifiers, const std::string& name, const std::string& value)
{
    if (name.empty() || !Within(attributes++, kMostAttributes, "attributes"))
        return;
    if (modifiers.AddString(name.c_str(), value.c_str()) != B_OK)
        fprintf(
            stderr, "xmlParser: attribute <%s> left out\n", LibPrintable(name.c_str(), 80).c_str());
}

// Reads the rest of a tag whose name was read, and cuts name to what it is without its "/". True if
// the tag closes itself.
bool xmlParser::ReadAttributes(char* name, const bool& hasModifiers, xmlTagModifiers& modifiers)
{
    if (!hasModifiers)
        return CutSlash(name);
    AddModifiers(modifiers);
    return saved == '/';
}

bool xmlParser::FindTag(const char* name, xmlTag& tag)
{
    const LibString wanted(name ? name : ""); // a copy: it may be the tag's own name
    char found[kNameSize];
    bool hasModifiers = false;
    elements = 0;
    tag.Clear();
    while (NextTag(found, hasModifiers)) {
        const bool closed = !hasModifiers && CutSlash(found);
        if (!IsEqual(wanted, found)) {
            if (strcmp(found, kComment) == 0)
                SkipMarkup(found);
            continue;
        }
        tag.SetName(found);
        if (!ReadAttributes(found, hasModifiers, tag.modifiers) && !closed && !NoAnchorTag(found))
            ReadBody(tag);
        return true;
    }
    return false;
}

bool xmlParser::SkipTag(const char* name) const
{
    return strncmp(name, "?xml", 4) == 0 || name[0] == '!';
}

bool xmlParser::NoAnchorTag(const char* name) const
{
    return strncmp(name, "?xml", 4) == 0 || name[0] == '!';
}

// Not by recursion: a file decides how deep its elements lie.
void xmlParser::ReadBody(xmlTag& tag)
{
    std::vector<OpenElement> open;
    open.push_back({ &tag, {} });
    while (!open.empty() && Advance()) {
        if (buffer[column] == '<')
            ReadMarkup(open);
        else
            ReadText(open.back().text);
    }
    while (!open.empty())
        CloseElement(open);
}

// Takes the rest of the line up to the next tag at once.
void xmlParser::ReadText(std::string& text)
{
    // A text may be a whole file: a character at a time would look at the limit for each.
    const size_t length = strcspn(buffer + column, "<");
    AddText(text, std::string_view(buffer + column, length));
    column += static_cast<int32>(length) - 1; // of the last character taken
}

void xmlParser::ReadMarkup(std::vector<OpenElement>& open)
{
    char name[kNameSize];
    bool hasModifiers = false;
    OpenElement& current = open.back();
    if (!ReadName(name, hasModifiers)) { // "a < b"
        AddText(current.text, "<");
        AddText(current.text, std::string_view(buffer + column, buffer[column] != '\0' ? 1 : 0));
    } else if (name[0] == '/') {
        if (hasModifiers)
            SkipMarkup(name);
        if (IsEqual(current.tag->name, name + 1))
            CloseElement(open);
    } else if (SkipTag(name)) {
        SkipMarkup(name);
    } else {
        ReadChild(open, name, hasModifiers);
    }
}

void xmlParser::ReadChild(std::vector<OpenElement>& open, char* name, const bool& hasModifiers)
{
    OpenElement& parent = open.back();
    xmlTag* child = nullptr;
    if (Within(open.size(), kMostLevels, "levels") && Within(elements++, kMostElements, "elements"))
        child = parent.tag->AddChild();
    xmlTagModifiers ignored;
    const bool closed = ReadAttributes(name, hasModifiers, child ? child->modifiers : ignored);
    const bool hasBody = !closed && !NoAnchorTag(name);
    if (child) {
        child->SetName(name);
        child->SetParentLocation(static_cast<int32>(parent.text.size()));
        if (hasBody)
            open.push_back({ child, {} });
    } else if (hasBody) {
        SkipElement(name);
    }
}

void xmlParser::CloseElement(std::vector<OpenElement>& open)
{
    xmlTag& tag = *open.back().tag;
    tag.content = open.back().text.c_str();
    tag.StripTrailingContent();
    open.pop_back();
}

// To the end of a tag or comment whose name was read, without its attributes.
void xmlParser::SkipMarkup(const char* name)
{
    const bool comment = strcmp(name, kComment) == 0;
    if (!comment && buffer[column] == '>')
        return;
    int dashes = 0;
    while (Advance()) {
        const char c = buffer[column];
        if (c == '>' && (!comment || dashes >= 2))
            return;
        dashes = c == '-' ? dashes + 1 : 0;
    }
}

// Past the body of an element whose start was read, with all that lies in it.
void xmlParser::SkipElement(const char* name)
{
    char found[kNameSize];
    bool hasModifiers = false;
    xmlTagModifiers ignored;
    // Counted, as elements of the same name, each with an end of its own, may lie in it.
    for (int64 level = 1; level > 0 && NextTag(found, hasModifiers);) {
        if (strcmp(found, kComment) == 0)
            SkipMarkup(found);
        else if (found[0] == '/' && strcmp(found + 1, name) == 0)
            level--;
        else if (strcmp(found, name) == 0 && !ReadAttributes(found, hasModifiers, ignored))
            level++;
    }
}

void xmlParser::AddText(std::string& text, std::string_view added)
{
    while (!added.empty() && !xmlTag::Accepts(added.front(), text.empty()))
        added.remove_prefix(1);
    if (Within(text.size() + added.size(), kMostSize, "bytes of text"))
        text += added;
}

// False, with one line for a file, if there already are as many as can be taken.
bool xmlParser::Within(const size_t& count, const size_t& limit, const char* what)
{
    if (count < limit)
        return true;
    if (!complained)
        fprintf(stderr, "xmlParser: more than <%zu> %s, the rest is left out\n", limit, what);
    complained = true;
    return false;
}

void xmlParser::PrintToStream() const
{
    fprintf(stderr, "xmlParser: line %d, column %d\nbuffer <%s>\n", line, column, buffer);
}
