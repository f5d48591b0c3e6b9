#include "Locations.h"

#include "FileDescriptor.h"
#include "SupportDefs.h"
#include "SystemTree.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <pwd.h>
#include <random>
#include <sstream>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <sys/sysmacros.h>
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

std::string RandomDigits()
{
    std::random_device random;
    char digits[17];
    snprintf(digits, sizeof digits, "%08x%08x", random(), random());
    return digits;
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
        if (line[at] == '\\') // the file is shell text
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

namespace {

// Where the running program was started from. It may have been replaced there in the meantime.
const std::string& OwnProgram()
{
    static const std::string sProgram = [] {
        char path[4096 + 1];
        const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
        std::string text(path, length > 0 ? static_cast<size_t>(length) : 0);
        const std::string remark = " (deleted)";
        if (text.ends_with(remark) && access(text.c_str(), F_OK) != 0)
            text.resize(text.size() - remark.size());
        return text;
    }();
    return sProgram;
}

int64 DeviceOfOpen(int descriptor, uint64 mount)
{
    struct statfs info = {};
    int64 id = 0;
    static_assert(sizeof info.f_fsid == sizeof id);
    if (fstatfs(descriptor, &info) == 0)
        memcpy(&id, &info.f_fsid, sizeof id);
    return id != 0 ? id : static_cast<int64>(mount);
}

} // namespace

status_t IdentifyNode(int directory, const std::string& name, NodeIdentity* identity)
{
    // Opened first, then asked: so all answers are about the same file, whatever is renamed
    // meanwhile. O_PATH needs no right to read it and waits for no pipe.
    const int flags = O_PATH | O_NOFOLLOW | O_CLOEXEC;
    const FileDescriptor named(name.empty() ? -1 : openat(directory, name.c_str(), flags));
    if (!name.empty() && !named.IsOpen())
        return StatusOfErrno();
    const int node = name.empty() ? directory : named.Get();
    struct statx info = {};
    const unsigned mask = STATX_TYPE | STATX_MODE | STATX_NLINK | STATX_INO | STATX_BTIME;
    if (statx(node, "", AT_EMPTY_PATH | AT_SYMLINK_NOFOLLOW, mask, &info) != 0)
        return StatusOfErrno();
    identity->inode = info.stx_ino;
    identity->links = info.stx_nlink;
    identity->birth = 0;
    if (info.stx_mask & STATX_BTIME)
        identity->birth =
            static_cast<int64>(info.stx_btime.tv_sec) * 1'000'000'000 + info.stx_btime.tv_nsec;
    identity->mount = makedev(info.stx_dev_major, info.stx_dev_minor);
    identity->device = DeviceOfOpen(node, identity->mount);
    identity->path = name.starts_with('/') ? name : PathOfDescriptor(directory);
    if (!identity->path.empty() && !name.empty() && name != "." && !name.starts_with('/'))
        identity->path = JoinPath(identity->path, name);
    identity->isProgram =
        S_ISREG(info.stx_mode) && (info.stx_mode & 0111) && identity->path == OwnProgram();
    return B_OK;
}

int64 DeviceOf(std::string path)
{
    NodeIdentity there;
    status_t error = IdentifyNode(AT_FDCWD, path, &there);
    // What is not there yet will lie on the file system of the folder in which it will be made.
    while ((error == B_ENTRY_NOT_FOUND || error == B_NOT_A_DIRECTORY) && path.size() > 1) {
        path = SplitPath(path).directory;
        error = IdentifyNode(AT_FDCWD, path, &there);
    }
    return error == B_OK ? there.device : 0;
}
