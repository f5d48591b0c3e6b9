#include "foundation/LibPath.h"

#include <atomic>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <unistd.h>

#include <Directory.h>
#include <FindDirectory.h>
#include <Message.h>
#include <Node.h>

#include "foundation/LibStringIterator.h"
#include "foundation/Utf8.h"

bool LibGetSettingsPath(LibString& path)
{
    BPath settings;
    if (find_directory(B_USER_SETTINGS_DIRECTORY, &settings) == B_OK)
        path = settings.Path();
    return true;
}

bool LibGetSettingsPath(char* path, const int& size)
{
    BPath settings;
    if (find_directory(B_USER_SETTINGS_DIRECTORY, &settings) == B_OK && size > 0)
        snprintf(path, static_cast<size_t>(size), "%s", settings.Path());
    return true;
}

bool LibFindEnvFile(const char* variable, const char* file, BPath& result)
{
    const char* value = variable != nullptr ? getenv(variable) : nullptr;
    if (value == nullptr || file == nullptr)
        return false;
    LibStringIterator directories(value);
    directories.Concat(":"); // so that every field ends with one, the last too
    LibString directory;
    while (directories.GetNextField(':', directory)) {
        const BPath path(directory, file);
        if (path.InitCheck() == B_OK && LibExists(path.Path())) {
            result = path;
            return true;
        }
    }
    return false;
}

bool LibFindSystemTool(const char* name, BPath& tool)
{
    BPath path;
    if (find_directory(B_BEOS_BIN_DIRECTORY, &path) != B_OK || path.Append(name) != B_OK
        || !LibExists(path.Path()))
        return false;
    tool = path;
    return true;
}

bool LibGetFullPath(const entry_ref& ref, LibString& path)
{
    BPath full;
    if (!LibGetFullPath(ref, full))
        return false;
    path = full.Path();
    return true;
}

bool LibGetFullPath(const entry_ref& ref, BPath& path)
{
    const BPath full(&ref);
    if (full.InitCheck() != B_OK)
        return false;
    path = full;
    return true;
}

bool LibGetPath(const entry_ref& directory, const char* name, BPath& path)
{
    BPath full(&directory);
    if (name == nullptr || full.Append(name) != B_OK)
        return false;
    path = full;
    return true;
}

bool LibGetEntryRef(const char* path, entry_ref& ref)
{
    return get_ref_for_path(path, &ref) == B_OK;
}

entry_ref LibGetParentRef(const entry_ref& ref)
{
    const BEntry entry(&ref);
    BEntry parent;
    entry_ref result;
    if (entry.GetParent(&parent) == B_OK)
        parent.GetRef(&result);
    return result;
}

bool LibGetParentPath(const char* path, LibString& parent)
{
    BPath full(path);
    if (full.GetParent(&full) != B_OK)
        return false;
    parent = full.Path();
    return true;
}

bool LibGetChildName(const char* path, char* leaf)
{
    const BPath full(path);
    if (full.InitCheck() != B_OK || strlen(full.Leaf()) >= B_FILE_NAME_LENGTH)
        return false;
    strcpy(leaf, full.Leaf());
    return true;
}

bool LibGetFilePath(const BMessage* message, BPath& path)
{
    entry_ref directory;
    const char* name = nullptr;
    return message != nullptr && message->FindRef("directory", &directory) == B_OK
        && message->FindString("name", &name) == B_OK && LibGetPath(directory, name, path);
}

bool LibGetWorkingDirectory(BPath& path)
{
    const BPath here(".");
    if (here.InitCheck() != B_OK)
        return false;
    path = here;
    return true;
}

bool LibChangeDirectory(const char* path)
{
    return path != nullptr && chdir(path) == 0;
}

bool LibExists(const char* path)
{
    return path != nullptr && access(path, F_OK) == 0;
}

bool Libmkdir(const char* path)
{
    return !LibExists(path) && create_directory(path, 0775) == B_OK;
}

void LibUniqueName(BPath& path, const char* prefix)
{
    static std::atomic<long> calls = 0;
    char numbers[64]; // three of up to 20 digits
    snprintf(numbers, sizeof(numbers), "%ld%ld%ld", ++calls, static_cast<long>(getpid()),
        static_cast<long>(time(nullptr)));
    constexpr size_t kRoom = B_FILE_NAME_LENGTH - sizeof(numbers);
    const std::string name =
        std::string(LibCutUtf8(prefix != nullptr ? prefix : "", kRoom)) + numbers;
    BPath unique;
    if (find_directory(B_COMMON_TEMP_DIRECTORY, &unique, true) == B_OK)
        unique.Append(name.c_str());
    path = unique;
}

namespace {

off_t AttributeSizes(BNode& node)
{
    off_t total = 0;
    char name[B_ATTR_NAME_LENGTH];
    while (node.GetNextAttrName(name) == B_OK) {
        attr_info info;
        if (node.GetAttrInfo(name, &info) == B_OK)
            total += info.size;
    }
    return total;
}

off_t FileSize(const char* path, bool withAttributes)
{
    BNode node(path);
    off_t size = 0;
    node.GetSize(&size);
    return withAttributes ? size + AttributeSizes(node) : size;
}

} // namespace

off_t LibEntrySize(const char* path, bool withAttributes)
{
    if (!BEntry(path).IsDirectory())
        return FileSize(path, withAttributes);
    BDirectory directory(path);
    BEntry entry;
    off_t total = 0;
    while (directory.GetNextEntry(&entry) == B_OK) {
        BPath inside;
        if (entry.GetPath(&inside) == B_OK)
            total += LibEntrySize(inside.Path(), withAttributes);
    }
    return total;
}
