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
