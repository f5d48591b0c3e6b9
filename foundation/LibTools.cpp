#include "foundation/LibTools.h"

#include "foundation/LibPath.h"
#include "foundation/PlainText.h"

#include <Directory.h>
#include <Mime.h>
#include <NodeInfo.h>
#include <Path.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

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

namespace {

// Where a tool puts what it copies or moves to to.
BPath Destination(const char* from, const char* to)
{
    const BPath source(from);
    if (source.InitCheck() == B_OK && BEntry(to, true).IsDirectory())
        return BPath(to, source.Leaf());
    return BPath(to);
}

// Sets the type where the node does not have it anyway: the kit's store is left in peace mostly.
bool SetType(BNode& node, const char* type)
{
    BNodeInfo info(&node);
    char present[B_MIME_TYPE_LENGTH];
    return (info.GetType(present) == B_OK && strcmp(present, type) == 0)
        || info.SetType(type) == B_OK;
}

void CopyMimeType(const char* from, const char* to)
{
    BNode source(from);
    BNode target(to);
    char type[B_MIME_TYPE_LENGTH];
    if (BNodeInfo(&source).GetType(type) == B_OK)
        SetType(target, type);
}

// The archive's path so that unzip, which takes an archive with "*", "?" or "[" in its path for a
// pattern of archives, finds this one and no other.
std::string UnzipPattern(const char* path)
{
    std::string pattern(path);
    if (pattern.find_first_of("*?[") == pattern.npos)
        return pattern;
    const size_t leaf = pattern.rfind('/') + 1;
    const std::string name = pattern.substr(leaf);
    pattern.resize(leaf);
    for (const char c : name) {
        if (c == '\\')
            pattern += "[\\\\]";
        else if (strchr("*?[", c))
            pattern += { '[', c, ']' };
        else
            pattern += c;
    }
    return pattern;
}

bool EnterParent(const BPath& path)
{
    BPath parent;
    return path.GetParent(&parent) == B_OK && LibChangeDirectory(parent.Path());
}

} // namespace

bool LibCopy(const char* from, const char* to)
{
    BPath tool;
    if (!LibFindSystemTool("cp", tool))
        return false;
    const BPath copy = Destination(from, to); // of before, when a directory to need not exist
    if (ToolCommand(tool.Path()).Option("-fR").Path(from).Path(to).Run() != 0)
        return false;
    CopyMimeType(from, copy.Path());
    return true;
}

bool LibMove(const char* from, const char* to)
{
    BPath tool;
    return LibFindSystemTool("mv", tool)
        && ToolCommand(tool.Path()).Option("-f").Path(from).Path(to).Run() == 0;
}

bool LibUnlink(const char* path)
{
    BPath tool;
    return LibFindSystemTool("rm", tool)
        && ToolCommand(tool.Path()).Option("-fr").Path(path).Run() >= 0;
}

bool LibSymLink(const char* target, const char* link)
{
    BPath tool;
    return LibFindSystemTool("ln", tool)
        && ToolCommand(tool.Path()).Option("-fs").Target(target).Path(link).Run() >= 0;
}

namespace {

bool SetGuessedType(const char* path)
{
    BNode node(path);
    if (node.IsDirectory()) {
        BDirectory directory(path);
        BEntry entry;
        BPath inside;
        bool done = directory.InitCheck() == B_OK;
        while (directory.GetNextEntry(&entry) == B_OK)
            done = entry.GetPath(&inside) == B_OK && SetGuessedType(inside.Path()) && done;
        return done;
    }
    entry_ref ref;
    BMimeType type;
    return get_ref_for_path(path, &ref) == B_OK && BMimeType::GuessMimeType(&ref, &type) == B_OK
        && SetType(node, type.Type());
}

} // namespace

bool Libmimeset(const char* path)
{
    BPath tool;
    if (!LibFindSystemTool("mimeset", tool))
        return SetGuessedType(path);
    return ToolCommand(tool.Path()).Option("-f").Path(path).Run() >= 0;
}

bool LibZip(const char* archive, const BPath& source, int level)
{
    BPath tool;
    // From inside the parent, since zip keeps names as they are given: the archive then holds none
    // of the folders above.
    if (!LibFindEnvFile("PATH", "zip", tool) || !EnterParent(source))
        return false;
    char options[8];
    snprintf(options, sizeof(options), "-rq%d", std::clamp(level, 0, 9));
    return ToolCommand(tool.Path()).Option(options).Path(archive).Path(source.Leaf()).Run() >= 0;
}

namespace {

// As ToolCommand::Run().
int Unzip(const char* archive)
{
    BPath tool;
    const BPath full(archive);
    if (!LibFindEnvFile("PATH", "unzip", tool) || !EnterParent(full))
        return -1;
    // -o: unzip would ask before it replaces a file, and wait for an answer.
    return ToolCommand(tool.Path()).Option("-oq").Path(UnzipPattern(full.Path()).c_str()).Run();
}

} // namespace

bool LibUnzip(const char* archive)
{
    return Unzip(archive) >= 0;
}

bool LibUnzipWhole(const char* archive)
{
    return Unzip(archive) == 0;
}

bool LibTar(const char* source, const char* archive)
{
    BPath tool;
    const BPath full(archive);
    if (!LibFindSystemTool("tar", tool) || !EnterParent(full))
        return false;
    ToolCommand command(tool.Path());
    if (source && strchr(source, '\\'))
        command.Option("--no-unquote"); // else "\n" in a name is a line end to it
    return command.Option("-cf").Path(full.Leaf()).Path(source).Run() >= 0;
}
