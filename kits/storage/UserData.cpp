#include "UserData.h"

#include "Directory.h"
#include "FileDescriptor.h"
#include "KillGuard.h"
#include "Locations.h"
#include "WholeFile.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t kOthersWrite = S_IWGRP | S_IWOTH;

std::string Folder()
{
    return folders::Data() + "/tarvex";
}

bool IsOurs(const struct stat& status)
{
    return status.st_uid == 0 || status.st_uid == geteuid();
}

// Whether the folder, left open if it is there, is to be believed.
bool OpenFolder(FileDescriptor& folder, struct stat& status)
{
    folder = FileDescriptor(open(Folder().c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    return folder.IsOpen() && fstat(folder.Get(), &status) == 0 && IsOurs(status)
        && !(status.st_mode & kOthersWrite);
}

// What a call's error says of a file; "": there is none.
std::string ReasonOf(int error)
{
    if (error == ENOENT)
        return "";
    return error == ELOOP || error == ENXIO ? "it is no file of yours alone" : strerror(error);
}

// In a folder that nobody else can enter the mode is what this user's umask made of it.
bool IsSafe(const struct stat& file, const struct stat& folder)
{
    const bool isClosed = !(folder.st_mode & (S_IRWXG | S_IRWXO));
    return S_ISREG(file.st_mode) && IsOurs(file) && (isClosed || !(file.st_mode & kOthersWrite));
}

} // namespace

std::optional<std::string> ReadUserData(const std::string& name, size_t mostBytes, std::string* why)
{
    const KillGuard guard;
    const auto fail = [why](const std::string& reason) {
        if (why)
            *why = reason;
        return std::nullopt;
    };
    struct stat folderStatus = {};
    struct stat status = {};
    FileDescriptor folder;
    if (!OpenFolder(folder, folderStatus))
        return fail(folder.IsOpen() ? "its folder is not safe from others" : ReasonOf(errno));
    const int flags = O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC;
    const FileDescriptor file(openat(folder.Get(), name.c_str(), flags));
    if (!file.IsOpen() || fstat(file.Get(), &status) != 0)
        return fail(ReasonOf(errno));
    if (!IsSafe(status, folderStatus))
        return fail("it is no file of yours alone");

    std::string text;
    char block[16384];
    ssize_t got = 0;
    while (text.size() <= mostBytes && (got = read(file.Get(), block, sizeof block)) > 0)
        text.append(block, static_cast<size_t>(got));
    if (got < 0)
        return fail(ReasonOf(errno));
    if (text.size() > mostBytes)
        return fail("it has more than " + std::to_string(mostBytes) + " bytes");
    fail("");
    return text;
}

bool WriteUserData(const std::string& name, const std::string& text)
{
    static_cast<void>(create_directory(Folder().c_str(), 0700)); // or it is looked at below
    struct stat folderStatus = {};
    struct stat status = {};
    FileDescriptor folder;
    if (!OpenFolder(folder, folderStatus))
        return false;
    const bool isThere = fstatat(folder.Get(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    if (isThere && !IsSafe(status, folderStatus))
        return false;
    WholeFile file(PathOfUserData(name).c_str());
    return file.Stream() && fwrite(text.data(), 1, text.size(), file.Stream()) == text.size()
        && file.Commit();
}

std::string PathOfUserData(const std::string& name)
{
    return Folder() + "/" + name;
}
