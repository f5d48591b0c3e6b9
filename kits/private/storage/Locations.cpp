#include "Locations.h"

#include <climits>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "SupportDefs.h"

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
