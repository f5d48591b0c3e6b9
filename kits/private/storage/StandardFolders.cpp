#include "StandardFolders.h"

#include <cstdlib>
#include <pwd.h>
#include <sstream>
#include <unistd.h>
#include <vector>

#include "SystemTree.h"

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
