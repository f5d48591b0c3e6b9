#include "Locations.h"

#include "SupportDefs.h"
#include "SystemTree.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <pwd.h>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

const char* const kReleaseFile = "/etc/os-release";

PathParts SplitPath(std::string path)
{
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    const size_t slash = path.rfind('/');
    if (slash == path.npos)
        return { ".", path };
    return { path.substr(0, slash + 1), path.substr(slash + 1) };
}

std::string JoinPath(const std::string& directory, const std::string& name)
{
    const bool hasSlash = !directory.empty() && directory.back() == '/';
    return directory + (hasSlash ? "" : "/") + name;
}

std::string PathOfDescriptor(int descriptor)
{
    char path[PATH_MAX + 1];
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = readlink(link.c_str(), path, PATH_MAX);
    if (length <= 0)
        return "";
    path[length] = '\0';
    // The system gives a path to what has been deleted too, with a remark at its end.
    struct stat open = {};
    struct stat there = {};
    const bool isThere = fstat(descriptor, &open) == 0 && lstat(path, &there) == 0
        && open.st_dev == there.st_dev && open.st_ino == there.st_ino;
    return isThere ? path : "";
}

const char* LocalPath(const char* path)
{
    const bool isPlatforms = strcmp(path, "/system/Tracker") == 0;
    return isPlatforms && access(path, F_OK) != 0 ? kReleaseFile : path;
}

namespace folders {
namespace {

std::string WithoutSlash(std::string path)
{
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

// "" unless it is set to an absolute path.
std::string FromEnvironment(const char* variable)
{
    const char* path = getenv(variable);
    return path && *path == '/' ? WithoutSlash(path) : "";
}

// Started by a service, a program may have no HOME at all.
std::string FromUserTable()
{
    std::vector<char> buffer(16384);
    passwd entry = {};
    passwd* found = nullptr;
    const int error = getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
    return error == 0 && found && found->pw_dir[0] == '/' ? WithoutSlash(found->pw_dir) : "/";
}

std::string Below(const char* variable, const char* otherwise)
{
    const std::string path = FromEnvironment(variable);
    return path.empty() ? WithoutSlash(Home()) + otherwise : path;
}

// The value of a line XDG_DESKTOP_DIR="$HOME/Desktop"; "" for another line or a relative path.
std::string DesktopOfLine(const std::string& line)
{
    const std::string start = "XDG_DESKTOP_DIR=\"";
    const size_t end = line.rfind('"');
    if (line.compare(0, start.size(), start) != 0 || end < start.size())
        return "";
    std::string path;
    for (size_t at = start.size(); at < end; at++) {
        if (line[at] == '\\' && at + 1 < end) // the file is shell text
            at++;
        path += line[at];
    }
    if (path.compare(0, 5, "$HOME") == 0)
        path.replace(0, 5, Home());
    return path[0] == '/' ? WithoutSlash(path) : "";
}

} // namespace

std::string Home()
{
    const std::string home = FromEnvironment("HOME");
    return home.empty() ? FromUserTable() : home;
}

std::string Settings()
{
    return Below("XDG_CONFIG_HOME", "/.config");
}

std::string Data()
{
    return Below("XDG_DATA_HOME", "/.local/share");
}

std::string Desktop()
{
    std::istringstream lines(kernel::ReadText(Settings() + "/user-dirs.dirs"));
    for (std::string line; std::getline(lines, line);)
        if (const std::string path = DesktopOfLine(line); !path.empty())
            return path;
    return Home() + "/Desktop";
}

std::string Temporary()
{
    const std::string path = FromEnvironment("TMPDIR");
    return path.empty() ? "/tmp" : path;
}

} // namespace folders
