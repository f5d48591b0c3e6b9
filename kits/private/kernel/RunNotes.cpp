#include "RunNotes.h"

#include "CpuTopology.h"
#include "ProcessorLease.h"
#include "SystemTree.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace kernel {
namespace {
constexpr char kFinished[] = "run-"; // and the process
constexpr char kUnfinished[] = "new-";

// "" where the system does not tell; then all notes count as of this one.
std::string BootId(const std::string& root)
{
    const std::string id = ReadText(root + "/proc/sys/kernel/random/boot_id");
    return id.substr(0, id.find('\n'));
}

void AddFolder(const char* start, const char* below, std::vector<std::string>& folders)
{
    if (start && start[0] == '/')
        folders.push_back(std::string(start) + below);
}

// In the order of preference.
std::vector<std::string> Folders(const std::string& root)
{
    std::vector<std::string> folders { root + "/run/tarvex" };
    if (!root.empty())
        return folders;
    AddFolder(getenv("XDG_RUNTIME_DIR"), "/tarvex", folders);
    if (const char* data = getenv("XDG_DATA_HOME"); data && data[0] == '/')
        AddFolder(data, "/tarvex/runs", folders);
    else
        AddFolder(getenv("HOME"), "/.local/share/tarvex/runs", folders);
    return folders;
}

bool IsSafe(const struct stat& status)
{
    const bool isOthers = status.st_uid != 0 && status.st_uid != geteuid();
    return !isOthers && !(status.st_mode & (S_IWGRP | S_IWOTH));
}

// 0 or an error number.
int MakeFolder(const std::string& path)
{
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
    if (mkdir(path.c_str(), 0755) == 0 ? chmod(path.c_str(), 0755) != 0 : errno != EEXIST)
        return errno;
    struct stat status;
    if (lstat(path.c_str(), &status) != 0)
        return errno;
    if (!S_ISDIR(status.st_mode) || !IsSafe(status) || status.st_uid != geteuid())
        return EACCES;
    return access(path.c_str(), W_OK) == 0 ? 0 : errno;
}

// The files in it, if it is a folder that only root or this user can write to.
std::vector<std::filesystem::path> FilesIn(const std::string& folder)
{
    std::vector<std::filesystem::path> files;
    struct stat status;
    if (lstat(folder.c_str(), &status) != 0 || !S_ISDIR(status.st_mode) || !IsSafe(status))
        return files;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; entry != end;
         entry.increment(error))
        files.push_back(entry->path());
    return files;
}

// A file of root's or this user's; neither follows a link nor waits for a pipe.
std::optional<std::string> ReadSafely(const std::string& path)
{
    const int file = open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (file < 0)
        return std::nullopt;
    struct stat status;
    char text[4096];
    const bool isSafe = fstat(file, &status) == 0 && S_ISREG(status.st_mode) && IsSafe(status);
    const ssize_t length = isSafe ? read(file, text, sizeof(text)) : -1;
    close(file);
    if (length < 0)
        return std::nullopt;
    return std::string(text, static_cast<size_t>(length));
}

// Nothing if it cannot be read; a damaged one has no boot.
std::optional<RunNote> ReadNote(const std::string& path)
{
    const auto text = ReadSafely(path);
    if (!text)
        return std::nullopt;
    RunNote note;
    std::string word, boot;
    std::istringstream words(*text);
    words >> word >> boot >> word >> note.program.pid >> note.program.start >> word
        >> note.keeper.pid >> note.keeper.start >> word;
    if (!words || word != "off")
        return note;
    note.path = path;
    note.boot = boot;
    for (int number; words >> number;) {
        if (number >= 0 && number <= kMaxProcessorNumber)
            note.off.push_back(number);
    }
    return note;
}

// Removes notes from before the system started, and what was being written when a program died.
void ClearFolder(const std::string& folder, const std::string& boot)
{
    for (const std::filesystem::path& path : FilesIn(folder)) {
        const std::string name = path.filename();
        bool isWaste = false;
        if (name.starts_with(kFinished)) {
            const auto note = ReadNote(path);
            isWaste = note && note->boot != boot && !boot.empty();
        } else if (name.starts_with(kUnfinished)) {
            const auto pid = static_cast<pid_t>(NumberAt(name.substr(sizeof(kUnfinished) - 1), 0));
            isWaste = !ProcessTag::Of(pid).Lives();
        }
        if (isWaste)
            unlink(path.c_str());
    }
}

// Returns when the keeper has done its work, or never will.
void WaitForEnd(const ProcessTag& keeper)
{
    constexpr int kMostLooks = 1000, kMostStopped = 50;
    int stopped = 0;
    for (int looks = 0; looks < kMostLooks && stopped < kMostStopped && keeper.Lives(); looks++) {
        stopped = keeper.IsStopped() ? stopped + 1 : 0;
        usleep(10000);
    }
    keeper.Kill();
}

// 0 or an error number; wasOff: there was something to do.
int SwitchOnIfOff(const std::string& root, int number, bool& wasOff)
{
    const std::string path = ProcessorSwitchPath(root, number);
    wasOff = ReadText(path).starts_with('0');
    if (!wasOff)
        return 0;
    const int file = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    if (file < 0)
        return errno;
    const int error = WriteSwitch(file, true);
    close(file);
    return error;
}

void SwitchOnFrom(const std::string& root, const RunNote& note, LeftOff& left)
{
    WaitForEnd(note.keeper);
    bool isDone = true;
    for (const int number : note.off) {
        bool wasOff = false;
        if (IsTakenByAnother(root, number))
            continue; // that one's affair
        const int error = SwitchOnIfOff(root, number, wasOff);
        if (wasOff)
            (error == 0 ? left.nowOn : left.stillOff).push_back(number);
        if (error != 0) {
            left.error = error;
            isDone = false;
        }
    }
    if (isDone)
        unlink(note.path.c_str());
}
} // namespace

int RunNote::Write() const
{
    if (off.empty())
        return unlink(path.c_str()) == 0 || errno == ENOENT ? 0 : errno;
    std::ostringstream text;
    text << "boot " << (boot.empty() ? "unknown" : boot) << "\nprogram " << program.pid << ' '
         << program.start << "\nkeeper " << keeper.pid << ' ' << keeper.start << "\noff";
    for (const int number : off)
        text << ' ' << number;
    text << '\n';

    std::string unfinished = path;
    unfinished.replace(path.rfind('/') + 1, sizeof(kFinished) - 1, kUnfinished);
    unlink(unfinished.c_str()); // of an earlier process of this number
    const int file =
        open(unfinished.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644);
    if (file < 0)
        return errno;
    const std::string bytes = text.str();
    errno = ENOSPC; // of a short write
    const bool isWritten =
        write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size())
        && fchmod(file, 0644) == 0; // whatever the process's mask
    int error = isWritten ? 0 : errno;
    if (close(file) != 0 && error == 0) // where the folder is on a server
        error = errno;
    if (error == 0 && rename(unfinished.c_str(), path.c_str()) != 0)
        error = errno;
    if (error != 0)
        unlink(unfinished.c_str());
    return error;
}

RunNote OwnNote(const std::string& root, int& error)
{
    RunNote note;
    note.boot = BootId(root);
    note.program = ProcessTag::Of(getpid());
    for (const std::string& folder : Folders(root)) {
        error = MakeFolder(folder);
        if (error != 0)
            continue;
        note.path = folder + "/" + kFinished + std::to_string(getpid());
        break;
    }
    return note;
}

std::vector<RunNote> ReadNotes(const std::string& root)
{
    std::vector<RunNote> notes;
    const std::string boot = BootId(root);
    for (const std::string& folder : Folders(root)) {
        for (const std::filesystem::path& path : FilesIn(folder)) {
            if (!path.filename().native().starts_with(kFinished))
                continue;
            const auto note = ReadNote(path);
            if (note && !note->boot.empty() && (note->boot == boot || boot.empty()))
                notes.push_back(*note);
        }
    }
    return notes;
}

bool IsTakenByAnother(const std::string& root, int number)
{
    const std::vector<RunNote> notes = ReadNotes(root);
    return std::any_of(notes.begin(), notes.end(), [number](const RunNote& note) {
        return note.program.pid != getpid() && note.program.Lives()
            && std::find(note.off.begin(), note.off.end(), number) != note.off.end();
    });
}

LeftOff SwitchOnLeftOff(const std::string& root)
{
    LeftOff left;
    for (const RunNote& note : ReadNotes(root)) {
        if (!note.program.Lives())
            SwitchOnFrom(root, note, left);
    }
    for (const std::string& folder : Folders(root))
        ClearFolder(folder, BootId(root));
    return left;
}
} // namespace kernel
