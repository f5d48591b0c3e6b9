#include "console/OutputFile.h"

#include "results/ResultsFile.h"

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

// Opens and closes the file. Returns the error's text, or an empty one.
std::string TryToOpen(const std::string& path, const char* mode)
{
    FILE* file = fopen(path.c_str(), mode);
    if (!file)
        return strerror(errno);
    fclose(file);
    return "";
}

} // namespace

OutputFile::OutputFile(const std::string& givenPath) : path(givenPath)
{
    std::error_code error;
    const fs::path target = fs::canonical(givenPath, error); // an error where there is no file yet
    if (!error)
        path = target.string();
    if (!fs::exists(path, error) || fs::is_regular_file(path, error)) {
        const fs::path name = ".tarvex-run-" + std::to_string(getpid());
        temporary = (fs::path(path).parent_path() / name).string();
    }
}

std::string OutputFile::Check() const
{
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (status.type() == fs::file_type::none) // a part of the path that cannot be looked at
        return CannotWrite(path, error.message());
    if (status.type() == fs::file_type::directory)
        return CannotWrite(path, strerror(EISDIR));
    if (access(path.c_str(), W_OK) != 0 && errno != ENOENT)
        return CannotWrite(path, strerror(errno));
    if (temporary.empty())
        return "";
    if (const std::string why = TryToOpen(temporary, "wx"); !why.empty())
        return CannotWrite(path, why);
    fs::remove(temporary, error);
    return "";
}

bool OutputFile::Write(Results& results) const
{
    if (temporary.empty())
        return WriteResultsFile(path.c_str(), results);
    std::error_code error;
    const fs::file_status old = fs::status(path, error);
    if (WriteResultsFile(temporary.c_str(), results)) {
        if (fs::exists(old))
            fs::permissions(temporary, old.permissions(), error);
        fs::rename(temporary, path, error);
        if (!error)
            return true;
    }
    fprintf(stderr, "Error writing <%s>, it is as it was\n", path.c_str());
    fs::remove(temporary, error);
    return false;
}
