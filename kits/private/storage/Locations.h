// Paths, where open things are, and which file a name or a descriptor stands for.
#pragma once

#include "SupportDefs.h"

#include <string>

// A path cut before its last element; slashes at the end play no part.
struct PathParts {
    std::string directory; // with its slash at the end; "." where the path has none
    std::string leaf; // "" of the root
};
[[nodiscard]] PathParts SplitPath(std::string path);

// directory/name, with one slash between.
[[nodiscard]] std::string JoinPath(const std::string& directory, const std::string& name);

// 16 hexadecimal digits that nobody can know beforehand.
[[nodiscard]] std::string RandomDigits();

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

// Device, inode and time of birth, in nanoseconds since 1970, together are one file's for ever: an
// inode's number is given out again, but later.
struct NodeIdentity {
    std::string path; // real and absolute; empty where it has none any more
    uint64 inode = 0;
    int64 birth = 0; // 0: the file system keeps none
    uint64 links = 0; // names it has
    bool isProgram = false; // the file of the program that runs here, or what took its place
    int64 device = 0; // as DeviceOf() gives it; 0: not known
    uint64 mount = 0; // the system's number of the device, which is another one after a restart

    // Whether both are the same as far as their file system can tell.
    bool IsSameNode(uint64 otherInode, int64 otherBirth) const
    {
        return inode == otherInode && (birth == otherBirth || birth == 0 || otherBirth == 0);
    }
};

// Fills *identity with what name in the directory is (a link itself), or with "" what is open at
// directory. B_OK, or the error.
[[nodiscard]] status_t IdentifyNode(int directory, const std::string& name, NodeIdentity* identity);

// A number of the file system on which path, or the nearest folder above it that exists, lies: the
// same after a restart where the file system has one of its own. 0: it cannot be told.
[[nodiscard]] int64 DeviceOf(std::string path);
