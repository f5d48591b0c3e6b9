#include "FindDirectory.h"

#include "Directory.h"
#include "Locations.h"
#include "OwnFolder.h"
#include "Path.h"

#include <algorithm>
#include <iterator>

namespace {

enum class Base { kRoot, kHome, kSettings, kData, kDesktop, kTemporary };

struct Place {
    directory_which which;
    Base base;
    const char* below; // the base itself: ""
};

// Programs that have no folder of their own here, as the platform's applications and preferences,
// are found where the desktop looks for them: in the folder of their desktop entries.
constexpr Place kPlaces[] = {
    { B_DESKTOP_DIRECTORY, Base::kDesktop, "" },
    { B_TRASH_DIRECTORY, Base::kData, "Trash/files" },
    { B_BEOS_DIRECTORY, Base::kRoot, "usr" },
    { B_BEOS_SYSTEM_DIRECTORY, Base::kRoot, "usr/share" },
    { B_BEOS_ADDONS_DIRECTORY, Base::kRoot, "usr/lib" },
    { B_BEOS_BOOT_DIRECTORY, Base::kRoot, "boot" },
    { B_BEOS_FONTS_DIRECTORY, Base::kRoot, "usr/share/fonts" },
    { B_BEOS_LIB_DIRECTORY, Base::kRoot, "usr/lib" },
    { B_BEOS_SERVERS_DIRECTORY, Base::kRoot, "usr/sbin" },
    { B_BEOS_APPS_DIRECTORY, Base::kRoot, "usr/share/applications" },
    { B_BEOS_BIN_DIRECTORY, Base::kRoot, "usr/bin" },
    { B_BEOS_ETC_DIRECTORY, Base::kRoot, "etc" },
    { B_BEOS_DOCUMENTATION_DIRECTORY, Base::kRoot, "usr/share/doc" },
    { B_BEOS_PREFERENCES_DIRECTORY, Base::kRoot, "usr/share/applications" },
    { B_BEOS_TRANSLATORS_DIRECTORY, Base::kRoot, "usr/lib" },
    { B_BEOS_MEDIA_NODES_DIRECTORY, Base::kRoot, "usr/lib" },
    { B_BEOS_SOUNDS_DIRECTORY, Base::kRoot, "usr/share/sounds" },
    { B_COMMON_DIRECTORY, Base::kRoot, "usr/local" },
    { B_COMMON_SYSTEM_DIRECTORY, Base::kRoot, "usr/local/share" },
    { B_COMMON_ADDONS_DIRECTORY, Base::kRoot, "usr/local/lib" },
    { B_COMMON_BOOT_DIRECTORY, Base::kRoot, "boot" },
    { B_COMMON_FONTS_DIRECTORY, Base::kRoot, "usr/local/share/fonts" },
    { B_COMMON_LIB_DIRECTORY, Base::kRoot, "usr/local/lib" },
    { B_COMMON_SERVERS_DIRECTORY, Base::kRoot, "usr/local/sbin" },
    { B_COMMON_BIN_DIRECTORY, Base::kRoot, "usr/local/bin" },
    { B_COMMON_ETC_DIRECTORY, Base::kRoot, "usr/local/etc" },
    { B_COMMON_DOCUMENTATION_DIRECTORY, Base::kRoot, "usr/local/share/doc" },
    { B_COMMON_SETTINGS_DIRECTORY, Base::kRoot, "etc/xdg" },
    { B_COMMON_DEVELOP_DIRECTORY, Base::kRoot, "usr/local/src" },
    { B_COMMON_LOG_DIRECTORY, Base::kRoot, "var/log" },
    { B_COMMON_SPOOL_DIRECTORY, Base::kRoot, "var/spool" },
    { B_COMMON_TEMP_DIRECTORY, Base::kTemporary, "" },
    { B_COMMON_VAR_DIRECTORY, Base::kRoot, "var" },
    { B_COMMON_TRANSLATORS_DIRECTORY, Base::kRoot, "usr/local/lib" },
    { B_COMMON_MEDIA_NODES_DIRECTORY, Base::kRoot, "usr/local/lib" },
    { B_COMMON_SOUNDS_DIRECTORY, Base::kRoot, "usr/local/share/sounds" },
    { B_USER_DIRECTORY, Base::kHome, "" },
    { B_USER_CONFIG_DIRECTORY, Base::kSettings, "" },
    { B_USER_ADDONS_DIRECTORY, Base::kHome, ".local/lib" },
    { B_USER_BOOT_DIRECTORY, Base::kSettings, "autostart" },
    { B_USER_FONTS_DIRECTORY, Base::kData, "fonts" },
    { B_USER_LIB_DIRECTORY, Base::kHome, ".local/lib" },
    { B_USER_SETTINGS_DIRECTORY, Base::kSettings, "" },
    { B_USER_DESKBAR_DIRECTORY, Base::kData, "applications" },
    { B_USER_PRINTERS_DIRECTORY, Base::kHome, ".cups" },
    { B_USER_TRANSLATORS_DIRECTORY, Base::kHome, ".local/lib" },
    { B_USER_MEDIA_NODES_DIRECTORY, Base::kHome, ".local/lib" },
    { B_USER_SOUNDS_DIRECTORY, Base::kData, "sounds" },
    { B_APPS_DIRECTORY, Base::kRoot, "usr/share/applications" },
    { B_PREFERENCES_DIRECTORY, Base::kRoot, "usr/share/applications" },
    { B_UTILITIES_DIRECTORY, Base::kRoot, "usr/bin" },
};

std::string PathOf(Base base)
{
    switch (base) {
        case Base::kRoot: return "/";
        case Base::kHome: return folders::Home();
        case Base::kSettings: return folders::Settings();
        case Base::kData: return folders::Data();
        case Base::kDesktop: return folders::Desktop();
        case Base::kTemporary: break; // made, not only named
    }
    return "";
}

status_t Find(directory_which which, bool createIt, std::string& path)
{
    const Place* place = std::find_if(std::begin(kPlaces), std::end(kPlaces),
        [which](const Place& row) { return row.which == which; });
    if (place == std::end(kPlaces))
        return B_BAD_VALUE;
    if (place->base == Base::kTemporary) {
        const status_t error = folders::OwnTemporary(path);
        return createIt ? error : B_OK;
    }
    path = PathOf(place->base);
    if (*place->below)
        path = JoinPath(path, place->below);
    // What is made below a user's folders is his alone, as the rules for base directories ask.
    const mode_t mode = place->base == Base::kRoot ? 0755 : 0700;
    return createIt ? create_directory(path.c_str(), mode) : B_OK;
}

} // namespace

status_t find_directory(directory_which which, BPath* path, bool createIt, BVolume*)
{
    std::string found;
    const status_t error = path ? Find(which, createIt, found) : B_BAD_VALUE;
    return error == B_OK ? path->SetTo(found.c_str()) : error;
}
