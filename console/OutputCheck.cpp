#include "console/OutputCheck.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

std::string CannotWrite(const std::string& path, const std::string& why)
{
    return "cannot write <" + path + ">: " + why;
}

// Makes a file beside the one at path and removes it. Returns the error's text, or an empty one.
std::string TryBeside(const fs::path& path)
{
    const fs::path beside = path.parent_path() / (".tarvex-run-" + std::to_string(getpid()));
    FILE* file = fopen(beside.c_str(), "wx");
    if (!file)
        return strerror(errno);
    fclose(file);
    std::error_code error;
    fs::remove(beside, error);
    return "";
}

} // namespace

std::string CheckOutput(const std::string& path)
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::none) // a part of the path that cannot be looked at
        return CannotWrite(path, error.message());
    if (fs::is_directory(status))
        return CannotWrite(path, strerror(EISDIR));
    if (access(path.c_str(), W_OK) != 0 && errno != ENOENT)
        return CannotWrite(path, strerror(errno));
    if (fs::exists(status) && !fs::is_regular_file(status)) // a device or a pipe
        return "";
    const fs::path target = fs::canonical(path, error); // an error where there is no file yet
    const std::string why = TryBeside(error ? fs::path(path) : target);
    return why.empty() ? "" : CannotWrite(path, why);
}

void OpenStandardFiles()
{
    FILE* file = nullptr;
    do { // never closed, but for the first one that is none of the three
        file = fopen("/dev/null", "r");
    } while (file != nullptr && fileno(file) <= STDERR_FILENO);
    if (file != nullptr)
        fclose(file);
}

std::string FinishOutput()
{
    errno = 0;
    if (fflush(stdout) == 0 && ferror(stdout) == 0)
        return "";
    return CannotWrite("standard output", errno != 0 ? strerror(errno) : "an error before");
}
