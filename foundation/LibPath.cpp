#include "foundation/LibPath.h"

#include "foundation/LibStringIterator.h"
#include "foundation/Utf8.h"

#include <Directory.h>
#include <Message.h>
#include <Node.h>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <string_view>
#include <unistd.h>

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
    const char* value = variable ? getenv(variable) : nullptr;
    if (!value || !file)
        return false;
    LibStringIterator directories(value);
    directories.Concat(":"); // so that every field ends with one, the last too
    LibString directory;
    while (directories.GetNextField(':', directory)) {
        const BPath path(directory, file);
        // An empty directory makes no path: the working directory is not looked in.
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
    // Never by PATH, which may name folders in which others write.
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
    if (!name || full.Append(name) != B_OK)
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
    // The panel cannot name the file by a reference, as it may not exist yet.
    return message && message->FindRef("directory", &directory) == B_OK
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
    return path && chdir(path) == 0;
}

bool LibExists(const char* path)
{
    return path && access(path, F_OK) == 0;
}

bool Libmkdir(const char* path)
{
    return !LibExists(path) && create_directory(path, 0775) == B_OK;
}

void LibUniqueName(BPath& path, const char* prefix)
{
    // Call, process and second: the number of a process is given again.
    static std::atomic<long> sCalls = 0;
    char numbers[64]; // three of up to 20 digits
    snprintf(numbers, sizeof(numbers), "%ld%ld%ld", ++sCalls, static_cast<long>(getpid()),
        static_cast<long>(time(nullptr)));
    // The prefix is cut, never the numbers: they are what tells the names apart.
    constexpr size_t kRoom = B_FILE_NAME_LENGTH - sizeof(numbers);
    const std::string name = std::string(LibCutUtf8(prefix ? prefix : "", kRoom)) + numbers;
    // Stays unset where there is no folder for it: so the caller learns of it.
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
    // Of a link the link itself: one to a folder above it would lead round without end.
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

namespace {

struct StandardDirectory {
    directory_which which;
    std::string_view name;
};

// The order and the names are those of the platform's own documentation.
constexpr StandardDirectory kDirectories[] = {
    { B_DESKTOP_DIRECTORY, "Desktop" },
    { B_TRASH_DIRECTORY, "Trash" },
    { B_BEOS_DIRECTORY, "BeOS" },
    { B_BEOS_SYSTEM_DIRECTORY, "BeOS System" },
    { B_BEOS_ADDONS_DIRECTORY, "BeOS Add-Ons" },
    { B_BEOS_BOOT_DIRECTORY, "BeOS Boot" },
    { B_BEOS_FONTS_DIRECTORY, "BeOS Fonts" },
    { B_BEOS_LIB_DIRECTORY, "BeOS Libraries" },
    { B_BEOS_SERVERS_DIRECTORY, "BeOS Servers" },
    { B_BEOS_APPS_DIRECTORY, "BeOS Applications" },
    { B_BEOS_BIN_DIRECTORY, "BeOS Bin" },
    { B_BEOS_ETC_DIRECTORY, "BeOS Etc" },
    { B_BEOS_DOCUMENTATION_DIRECTORY, "BeOS Documentation" },
    { B_BEOS_PREFERENCES_DIRECTORY, "BeOS Preferences" },
    { B_BEOS_TRANSLATORS_DIRECTORY, "BeOS Translators" },
    { B_BEOS_MEDIA_NODES_DIRECTORY, "BeOS Media Nodes" },
    { B_BEOS_SOUNDS_DIRECTORY, "BeOS Sounds" },
    { B_COMMON_DIRECTORY, "Common" },
    { B_COMMON_SYSTEM_DIRECTORY, "Common System" },
    { B_COMMON_ADDONS_DIRECTORY, "Common Add-Ons" },
    { B_COMMON_BOOT_DIRECTORY, "Common Boot" },
    { B_COMMON_FONTS_DIRECTORY, "Common Fonts" },
    { B_COMMON_LIB_DIRECTORY, "Common Libraries" },
    { B_COMMON_SERVERS_DIRECTORY, "Common Servers" },
    { B_COMMON_BIN_DIRECTORY, "Common Bin" },
    { B_COMMON_ETC_DIRECTORY, "Common Etc" },
    { B_COMMON_DOCUMENTATION_DIRECTORY, "Common Documentation" },
    { B_COMMON_SETTINGS_DIRECTORY, "Common Settings" },
    { B_COMMON_DEVELOP_DIRECTORY, "Common Develop" },
    { B_COMMON_LOG_DIRECTORY, "Common Log" },
    { B_COMMON_SPOOL_DIRECTORY, "Common Spool" },
    { B_COMMON_TEMP_DIRECTORY, "Common Temporary" },
    { B_COMMON_VAR_DIRECTORY, "Common Var" },
    { B_COMMON_TRANSLATORS_DIRECTORY, "Common Translators" },
    { B_COMMON_MEDIA_NODES_DIRECTORY, "Common Media Nodes" },
    { B_COMMON_SOUNDS_DIRECTORY, "Common Sounds" },
    { B_USER_DIRECTORY, "User" },
    { B_USER_CONFIG_DIRECTORY, "User Configuration" },
    { B_USER_ADDONS_DIRECTORY, "User Add-Ons" },
    { B_USER_BOOT_DIRECTORY, "User Boot" },
    { B_USER_FONTS_DIRECTORY, "User Fonts" },
    { B_USER_LIB_DIRECTORY, "User Libraries" },
    { B_USER_SETTINGS_DIRECTORY, "User Settings" },
    { B_USER_DESKBAR_DIRECTORY, "User Deskbar" },
    { B_USER_PRINTERS_DIRECTORY, "User Printers" },
    { B_USER_TRANSLATORS_DIRECTORY, "User Translators" },
    { B_USER_MEDIA_NODES_DIRECTORY, "User Media Nodes" },
    { B_USER_SOUNDS_DIRECTORY, "User Sounds" },
    { B_APPS_DIRECTORY, "Applications" },
    { B_PREFERENCES_DIRECTORY, "Preferences" },
    { B_UTILITIES_DIRECTORY, "Utilities" },
};

} // namespace

bool LibGetStdDirName(const directory_which& which, LibString& name)
{
    for (const StandardDirectory& directory : kDirectories) {
        if (directory.which == which) {
            // The names are literals, so an end mark follows.
            name = directory.name.data();
            return true;
        }
    }
    return false;
}

bool LibGetStdDirName(const char* name, directory_which& which)
{
    for (const StandardDirectory& directory : kDirectories) {
        if (name && directory.name == name) {
            which = directory.which;
            return true;
        }
    }
    return false;
}

bool LibStdDirNameExists(const char* name)
{
    directory_which which;
    return LibGetStdDirName(name, which);
}
