// Paths, and where open things are.
#pragma once

#include <string>

// A path cut before its last element; slashes at the end play no part.
struct PathParts {
    std::string directory; // with its slash at the end; "." where the path has none
    std::string leaf; // "" of the root
};
[[nodiscard]] PathParts SplitPath(std::string path);

// directory/name, with one slash between.
[[nodiscard]] std::string JoinPath(const std::string& directory, const std::string& name);

// The absolute path of what is open, all links followed, as it is now; empty if it has none any
// more.
[[nodiscard]] std::string PathOfDescriptor(int descriptor);

// Where path is found here: "/system/Tracker", the platform's file manager, whose version is that
// of the system, is the release file of the distribution.
[[nodiscard]] const char* LocalPath(const char* path);
extern const char* const kReleaseFile;

// The user's folders by the XDG base directories, and where temporary ones are made.
namespace folders {
// All absolute, without a slash at the end, whether they exist or not. A variable that is not set
// or is relative has its default.
[[nodiscard]] std::string Home();
[[nodiscard]] std::string Settings(); // $XDG_CONFIG_HOME, ~/.config
[[nodiscard]] std::string Data(); // $XDG_DATA_HOME, ~/.local/share
[[nodiscard]] std::string Desktop(); // as user-dirs.dirs in the settings says, ~/Desktop
[[nodiscard]] std::string Temporary(); // $TMPDIR, /tmp
} // namespace folders
