#include "foundation/LibFileInfo.h"

#include <cstdio>
#include <cstring>
#include <string_view>

#include <Mime.h>
#include <Node.h>
#include <NodeInfo.h>

namespace {

const char* Description(std::string_view type)
{
    if (type == B_DIRECTORY_MIME_TYPE)
        return "Folder";
    if (type == B_APP_MIME_TYPE)
        return "Be Application";
    if (type == B_SYMLINK_MIME_TYPE)
        return "Symbolic Link";
    return "Unknown";
}

LibDateTime Moment(
    const BStatable& entry, status_t (BStatable::*get)(time_t*) const, const bool& local)
{
    LibDateTime result;
    time_t moment = 0;
    if ((entry.*get)(&moment) == B_OK)
        result.SetMoment(moment, local);
    return result;
}

} // namespace

bool LibGetMimeType(const entry_ref& ref, char* type, bool describe)
{
    BNode node(&ref);
    char found[B_MIME_TYPE_LENGTH];
    if (BNodeInfo(&node).GetType(found) != B_OK)
        return false;
    // A link is known by what it is, whatever type was set for it.
    if (describe)
        strcpy(type, node.IsSymLink() ? "Symbolic Link" : Description(found));
    else
        strcpy(type, found);
    return true;
}

bool LibSetMimeType(const char* path, const char* type)
{
    BNode node(path);
    return BNodeInfo(&node).SetType(type) == B_OK;
}

bool LibSetFileType(const char* path, const char* type)
{
    return LibSetMimeType(path, type);
}

LibDateTime LibCreationDate(const entry_ref& ref, const bool& local)
{
    const BEntry entry(&ref);
    if (!entry.Exists())
        fprintf(stderr, "LibCreationDate: Unable to set entry\n");
    return Moment(entry, &BStatable::GetCreationTime, local);
}

LibDateTime LibCreationDate(const char* path, const bool& local)
{
    const BEntry entry(path);
    if (!entry.Exists())
        fprintf(stderr, "LibCreationDate: Unable to set entry <%s>\n", path ? path : "");
    return Moment(entry, &BStatable::GetCreationTime, local);
}

LibDateTime LibLastModifiedDate(const BEntry& entry, const bool& local)
{
    return Moment(entry, &BStatable::GetModificationTime, local);
}

LibDateTime LibLastModifiedDate(const char* path, const bool& local)
{
    const BEntry entry(path);
    if (!entry.Exists())
        fprintf(stderr, "LibLastModifiedDate: Unable to set entry <%s>\n", path ? path : "");
    return LibLastModifiedDate(entry, local);
}

LibDateTime LibAccessedDate(const BEntry& entry, const bool& local)
{
    return Moment(entry, &BStatable::GetAccessTime, local);
}
