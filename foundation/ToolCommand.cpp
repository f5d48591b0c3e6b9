#include "foundation/ToolCommand.h"

#include "foundation/LibPath.h"
#include "foundation/PlainText.h"

#include <Path.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

// Of these characters the shell takes none for more than itself.
bool IsPlain(std::string_view path)
{
    for (const char c : path) {
        const char lower = LibToLower(c);
        const bool isLetter = lower >= 'a' && lower <= 'z';
        if (!isLetter && !LibIsDigit(c) && !strchr("/._+-", c))
            return false;
    }
    return !path.empty();
}

// "-x" is an option, zip reads names from its input for "@", and tar writes "host:file" elsewhere.
bool LooksLikeNoPath(std::string_view path)
{
    const std::string_view first = path.substr(0, path.find('/'));
    return first.starts_with('-') || first.starts_with('@') || first.find(':') != first.npos;
}

// The path without the folder, if it lies in that; else as a whole.
std::string PathSeenFrom(const BPath& folder, const std::string& path)
{
    const BPath full(path.c_str());
    if (full.InitCheck() != B_OK)
        return path;
    const std::string above = folder.Path() + std::string("/");
    return std::string_view(full.Path()).starts_with(above) ? full.Path() + above.size()
                                                            : full.Path();
}

// system() in another working directory; -1 if the process cannot go there and back.
int RunInside(const BPath& folder, const char* command)
{
    BPath before;
    if (!LibGetWorkingDirectory(before) || !LibChangeDirectory(folder.Path())) {
        fprintf(stderr, "Unable to work in <%s>\n", folder.Path());
        return -1;
    }
    const int status = system(command);
    if (!LibChangeDirectory(before.Path()))
        fprintf(stderr, "Unable to go back to <%s>\n", before.Path());
    return status;
}

} // namespace

ToolCommand::ToolCommand(const char* path) : tool(path ? path : "")
{
    if (IsPlain(tool))
        Append(tool);
    else
        AppendQuoted(tool, Kind::kPath);
}

ToolCommand& ToolCommand::Option(const char* option)
{
    return Add(Kind::kOption, option);
}

ToolCommand& ToolCommand::Quoted(const char* word)
{
    return Add(Kind::kWord, word ? word : "");
}

ToolCommand& ToolCommand::Path(const char* path)
{
    return Add(Kind::kPath, path);
}

ToolCommand& ToolCommand::Target(const char* path)
{
    return Add(Kind::kTarget, path);
}

ToolCommand& ToolCommand::Add(Kind kind, const char* bytes)
{
    if (!bytes) {
        complete = false;
        lacksPath = true;
        return *this;
    }
    Append(" ");
    if (kind == Kind::kOption)
        Append(bytes);
    else
        AppendQuoted(bytes, kind);
    words.push_back({ kind, bytes });
    return *this;
}

void ToolCommand::Append(std::string_view piece)
{
    if (length + piece.size() >= sizeof(text)) {
        complete = false;
        return;
    }
    memcpy(text + length, piece.data(), piece.size());
    length += piece.size();
    text[length] = '\0';
}

void ToolCommand::AppendQuoted(std::string_view bytes, Kind kind)
{
    Append("\"");
    if (kind != Kind::kWord && LooksLikeNoPath(bytes))
        Append("./");
    for (const char& c : bytes) {
        if (strchr("\"$`\\", c))
            Append("\\");
        Append({ &c, 1 });
    }
    Append("\"");
}

ToolCommand ToolCommand::SeenFrom(const BPath& folder) const
{
    // Options and texts are no paths, and a link's target is read from where the link lies.
    ToolCommand seen(tool.c_str());
    for (const Word& word : words) {
        const bool isMoved = word.kind == Kind::kPath;
        seen.Add(word.kind, (isMoved ? PathSeenFrom(folder, word.bytes) : word.bytes).c_str());
    }
    return seen;
}

int ToolCommand::Run() const
{
    if (complete)
        return system(text);
    for (const Word& word : words) {
        BPath folder;
        if (lacksPath || word.kind != Kind::kPath
            || BPath(word.bytes.c_str()).GetParent(&folder) != B_OK)
            continue;
        const ToolCommand shorter = SeenFrom(folder);
        if (shorter.complete)
            return RunInside(folder, shorter.text);
    }
    fprintf(stderr, "Command without a path or longer than 511 bytes <%s>\n", text);
    return -1;
}
