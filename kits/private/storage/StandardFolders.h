// The user's folders by the XDG base directories, and where temporary ones are made.
#pragma once

#include <string>

namespace folders {
// All absolute, without a slash at the end, whether they exist or not. A variable that is not set
// or is relative has its default.
[[nodiscard]] std::string Home();
[[nodiscard]] std::string Settings(); // $XDG_CONFIG_HOME, ~/.config
[[nodiscard]] std::string Data(); // $XDG_DATA_HOME, ~/.local/share
[[nodiscard]] std::string Desktop(); // as user-dirs.dirs in the settings says, ~/Desktop
[[nodiscard]] std::string Temporary(); // $TMPDIR, /tmp
} // namespace folders
