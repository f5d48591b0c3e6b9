#include "foundation/LibNode.h"

#include "foundation/LibFiles.h"
#include "foundation/LibPath.h"
#include "foundation/LibTools.h"

#include <Directory.h>
#include <File.h>
#include <Message.h>

#include <cstdio>
#include <cstring>

namespace {

constexpr off_t kMaxAttribute = 1'000'000'000; // more the storage kit does not take

bool ReadFile(const char* path, std::string& data)
{
    BFile file(path, B_READ_ONLY);
    off_t size = 0;
    if (file.GetSize(&size) != B_OK || size > kMaxAttribute)
        return false;
    data.resize(static_cast<size_t>(size));
    return file.Read(data.data(), data.size()) == static_cast<ssize_t>(data.size());
}

// Moves everything in the folder into directory.
bool MoveAll(const char* folder, const char* directory, bool replace)
{
    BDirectory from(folder);
    BEntry entry;
    bool done = from.CountEntries() > 0; // an archive that could not be unpacked
    while (from.GetNextEntry(&entry) == B_OK) {
        BPath path;
        if (entry.GetPath(&path) != B_OK)
            return false;
        // A file that stays as it is counts as done: nobody asked for it to be replaced.
        if (replace || !BEntry(BPath(directory, path.Leaf()).Path()).Exists())
            done = LibMove(path.Path(), directory) && done;
    }
    return done;
}

} // namespace

bool LibNode::ReadWhole(const char* name, type_code type, std::string& data) const
{
    // Another program may write between the two calls. A read that leaves room got all there was.
    attr_info info;
    while (GetAttrInfo(name, &info) == B_OK) {
        data.resize(static_cast<size_t>(info.size) + 1);
        const ssize_t size = ReadAttr(name, type, 0, data.data(), data.size());
        if (size < 0)
            return false;
        if (size > info.size)
            continue;
        data.resize(static_cast<size_t>(size));
        return true;
    }
    return false;
}

bool LibNode::ReadStringAttr(const char* name, LibString& value) const
{
    std::string text;
    if (!ReadWhole(name, B_STRING_TYPE, text))
        return false;
    // Ends at the first NUL: other programs may have counted an end mark in, or not.
    value = text.c_str();
    return true;
}

bool LibNode::WriteStringAttr(const char* name, const char* value)
{
    if (!value)
        return false;
    const size_t size = strlen(value) + 1;
    return WriteAttr(name, B_STRING_TYPE, 0, value, size) == static_cast<ssize_t>(size);
}

bool LibNode::ReadInt32Attr(const char* name, int32& value) const
{
    std::string data;
    if (!ReadWhole(name, B_INT32_TYPE, data) || data.size() != sizeof(value))
        return false;
    memcpy(&value, data.data(), sizeof(value));
    return true;
}

bool LibNode::WriteInt32Attr(const char* name, const int32& value)
{
    return WriteAttr(name, B_INT32_TYPE, 0, &value, sizeof(value)) == sizeof(value);
}

bool LibNode::ReadBoolAttr(const char* name, bool& value) const
{
    uint8 byte = 0; // not a bool, which must not hold what the attribute may
    if (ReadAttr(name, B_BOOL_TYPE, 0, &byte, 1) != 1)
        return false;
    value = byte != 0;
    return true;
}

bool LibNode::WriteBoolAttr(const char* name, const bool& value)
{
    const uint8 byte = value ? 1 : 0;
    return WriteAttr(name, B_BOOL_TYPE, 0, &byte, 1) == 1;
}

bool LibNode::ReadMessageAttr(const char* name, BMessage& message) const
{
    std::string data;
    // Into one of its own: what is damaged must leave the caller's message as it was.
    BMessage read;
    if (!ReadWhole(name, B_RAW_TYPE, data)
        || read.Unflatten(data.data(), static_cast<ssize_t>(data.size())) != B_OK)
        return false;
    message = read;
    return true;
}

bool LibNode::WriteMessageAttr(const char* name, const BMessage& message)
{
    const ssize_t size = message.FlattenedSize();
    std::string data(static_cast<size_t>(size), '\0');
    return message.Flatten(data.data(), size) == B_OK
        && WriteAttr(name, B_RAW_TYPE, 0, data.data(), data.size()) == size;
}

bool LibNode::CompressFile(const char* name, const char* path)
{
    if (!LibExists(path)) {
        fprintf(stderr, "LibNode::CompressFile: %s does not exist\n", path ? path : "");
        return false;
    }
    BPath archive;
    LibUniqueName(archive, "zip");
    if (archive.InitCheck() != B_OK)
        return false;
    const std::string file = std::string(archive.Path()) + ".zip"; // zip adds it where no dot is
    std::string data;
    if (!LibZip(file.c_str(), BPath(path)))
        return false;
    fprintf(stderr, "zipped to %s\n", file.c_str());
    const bool read = ReadFile(file.c_str(), data);
    LibUnlink(file.c_str());
    const auto size = static_cast<ssize_t>(data.size());
    return read && WriteAttr(name, B_RAW_TYPE, 0, data.data(), data.size()) == size;
}

bool LibNode::UncompressFile(const char* name, const char* directory, bool replace) const
{
    std::string data;
    if (!ReadWhole(name, B_RAW_TYPE, data))
        return false;
    // A folder of its own, for the names in the archive may be those of other temporary files.
    const TemporaryFolder folder;
    const BPath archive(folder.Path(), "zip");
    BFile file(archive.Path(), B_WRITE_ONLY | B_CREATE_FILE | B_FAIL_IF_EXISTS);
    if (file.InitCheck() != B_OK) {
        fprintf(stderr, "Error initializine file in UncompressFile\n");
        return false;
    }
    const bool written = file.Write(data.data(), data.size()) == static_cast<ssize_t>(data.size());
    file.Unset();
    if (!written || !LibUnzipWhole(archive.Path()))
        return false;
    // Before the folder is emptied, or the archive would be moved with what it held.
    LibUnlink(archive.Path());
    return create_directory(directory, 0775) == B_OK && MoveAll(folder.Path(), directory, replace);
}
