#include "foundation/LibTools.h"

#include "foundation/LibPath.h"
#include "foundation/ToolCommand.h"

#include <Directory.h>
#include <Mime.h>
#include <NodeInfo.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

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
