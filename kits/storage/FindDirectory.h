// The standard directories, as they lie on this system: below /usr what came with it, below
// /usr/local what was added for all users, and below the home directory the user's own, by the XDG
// base directories ($XDG_CONFIG_HOME, $XDG_DATA_HOME and the user-dirs.dirs file).
#pragma once

#include "SupportDefs.h"

class BPath;
class BVolume;

enum directory_which : int32 { // so that any number may be asked for
    B_DESKTOP_DIRECTORY = 0,
    B_TRASH_DIRECTORY,

    B_BEOS_DIRECTORY = 1000, // what came with the system
    B_BEOS_SYSTEM_DIRECTORY,
    B_BEOS_ADDONS_DIRECTORY,
    B_BEOS_BOOT_DIRECTORY,
    B_BEOS_FONTS_DIRECTORY,
    B_BEOS_LIB_DIRECTORY,
    B_BEOS_SERVERS_DIRECTORY,
    B_BEOS_APPS_DIRECTORY,
    B_BEOS_BIN_DIRECTORY,
    B_BEOS_ETC_DIRECTORY,
    B_BEOS_DOCUMENTATION_DIRECTORY,
    B_BEOS_PREFERENCES_DIRECTORY,
    B_BEOS_TRANSLATORS_DIRECTORY,
    B_BEOS_MEDIA_NODES_DIRECTORY,
    B_BEOS_SOUNDS_DIRECTORY,

    B_COMMON_DIRECTORY = 2000, // what all users share
    B_COMMON_SYSTEM_DIRECTORY,
    B_COMMON_ADDONS_DIRECTORY,
    B_COMMON_BOOT_DIRECTORY,
    B_COMMON_FONTS_DIRECTORY,
    B_COMMON_LIB_DIRECTORY,
    B_COMMON_SERVERS_DIRECTORY,
    B_COMMON_BIN_DIRECTORY,
    B_COMMON_ETC_DIRECTORY,
    B_COMMON_DOCUMENTATION_DIRECTORY,
    B_COMMON_SETTINGS_DIRECTORY,
    B_COMMON_DEVELOP_DIRECTORY,
    B_COMMON_LOG_DIRECTORY,
    B_COMMON_SPOOL_DIRECTORY,
    B_COMMON_TEMP_DIRECTORY,
    B_COMMON_VAR_DIRECTORY,
    B_COMMON_TRANSLATORS_DIRECTORY,
    B_COMMON_MEDIA_NODES_DIRECTORY,
    B_COMMON_SOUNDS_DIRECTORY,

    B_USER_DIRECTORY = 3000, // the user's own
    B_USER_CONFIG_DIRECTORY,
    B_USER_ADDONS_DIRECTORY,
    B_USER_BOOT_DIRECTORY,
    B_USER_FONTS_DIRECTORY,
    B_USER_LIB_DIRECTORY,
    B_USER_SETTINGS_DIRECTORY,
    B_USER_DESKBAR_DIRECTORY,
    B_USER_PRINTERS_DIRECTORY,
    B_USER_TRANSLATORS_DIRECTORY,
    B_USER_MEDIA_NODES_DIRECTORY,
    B_USER_SOUNDS_DIRECTORY,

    B_APPS_DIRECTORY = 4000,
    B_PREFERENCES_DIRECTORY,
    B_UTILITIES_DIRECTORY,
};

// Sets *path to the directory, whether it exists or not; with createIt it is made, with its
// parents, for the user alone where it is the user's own. The volume is always the boot volume's:
// pass NULL. B_BAD_VALUE: no such constant, or path is NULL; else the error of making it. *path is
// then as it was.
//
// The common temporary directory is a folder of the program's own below $TMPDIR or /tmp, which no
// other user can enter. It is made when it is first asked for and goes with all in it when the
// program ends; where it cannot be made, only createIt tells.
status_t find_directory(
    directory_which which, BPath* path, bool createIt = false, BVolume* volume = nullptr);
