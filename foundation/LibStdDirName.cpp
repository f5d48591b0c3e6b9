#include "foundation/LibStdDirName.h"

#include <string_view>

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
            name = directory.name.data();
            return true;
        }
    }
    return false;
}

bool LibGetStdDirName(const char* name, directory_which& which)
{
    for (const StandardDirectory& directory : kDirectories) {
        if (name != nullptr && directory.name == name) {
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
