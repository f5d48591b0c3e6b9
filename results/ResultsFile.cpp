#include "results/ResultsFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <unistd.h>

#include "results/Results.h"

namespace fs = std::filesystem;

namespace {

bool WriteRecord(const fs::path& path, const char* record)
{
    FILE* file = fopen(path.c_str(), "w");
    if (file == nullptr)
        return false;
    const bool written =
        fprintf(file, "1.0\n%d\n%s\n", static_cast<int>(strlen(record)), record) >= 0;
    return fclose(file) == 0 && written; // a full disk may only show here
}

// Writes the record beside the file, which it then replaces.
bool ReplaceFile(const fs::path& path, const fs::file_status& old, const char* record)
{
    std::error_code error;
    const fs::path beside = path.parent_path() / (".tarvex-" + std::to_string(getpid()));
    bool written = WriteRecord(beside, record);
    if (written && fs::exists(old))
        fs::permissions(beside, old.permissions(), error);
    if (written) {
        fs::rename(beside, path, error);
        written = !error;
    }
    if (!written)
        fs::remove(beside, error);
    return written;
}

bool WriteWhole(const char* path, const char* record)
{
    std::error_code error;
    const fs::path linked = fs::canonical(path, error); // an error where there is no file yet
    const fs::path target = error ? fs::path(path) : linked;
    const fs::file_status old = fs::status(target, error);
    if (fs::exists(old) && !fs::is_regular_file(old))
        return WriteRecord(target, record);
    const bool isWritable = access(target.c_str(), W_OK) == 0 || errno == ENOENT;
    return isWritable && ReplaceFile(target, old, record);
}

} // namespace

bool WriteResultsFile(const char* path, Results& results)
{
    char record[kRecordSize];
    results.Write(record);
    if (WriteWhole(path, record))
        return true;
    fprintf(stderr, "Error writing <%s>\n", path);
    return false;
}
