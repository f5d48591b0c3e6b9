// The version of the distribution.
#pragma once

#include "AppFileInfo.h"

#include <string>

// From the lines NAME=value of its release file, final: the numbers of VERSION_ID; for the long
// text PRETTY_NAME, else NAME and VERSION_ID, else "Linux"; for the short one VERSION, else the
// long one. Texts that are too long are cut.
[[nodiscard]] version_info VersionOfRelease(const std::string& lines);
