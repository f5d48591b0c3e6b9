#include "FileType.h"

#include "FileDescriptor.h"
#include "Locations.h"
#include "Mime.h"
#include "OwnLibrary.h"
#include "TypeConstants.h"
#include "TypeDatabase.h"

#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

status_t ReadTypeAttribute(const BNode& node, const char* name, char* type)
{
    char text[B_MIME_TYPE_LENGTH] = "";
    const ssize_t size = node.ReadAttr(name, B_MIME_STRING_TYPE, 0, text, sizeof text - 1);
    if (size < 0)
        return static_cast<status_t>(size);
    memcpy(type, text, sizeof text);
    return B_OK;
}

status_t WriteTypeAttribute(BNode& node, const char* name, const char* type)
{
    if (!type)
        return RemoveIfThere(node, name);
    const size_t size = strlen(type) + 1;
    if (size > static_cast<size_t>(B_MIME_TYPE_LENGTH))
        return B_BAD_VALUE;
    const ssize_t written = node.WriteAttr(name, B_MIME_STRING_TYPE, 0, type, size);
    return written < 0 ? static_cast<status_t>(written) : B_OK;
}

status_t RemoveIfThere(BNode& node, const char* name)
{
    const status_t error = node.RemoveAttr(name);
    return error == B_ENTRY_NOT_FOUND ? static_cast<status_t>(B_OK) : error;
}

namespace {

// Binaries only: a script is a text too, and the database has types for those.
bool IsProgram(int file, mode_t mode)
{
    char magic[4] = {};
    return (mode & 0111) && pread(file, magic, sizeof magic, 0) == sizeof magic
        && memcmp(magic,
               "\x7f"
               "ELF",
               sizeof magic)
        == 0;
}

std::string AskDatabase(const std::string& path, int file)
{
    using Ask = decltype(&tarvex_ask_type_database);
    const auto ask = OwnFunction<Ask>("types", "tarvex_ask_type_database");
    std::string type = B_FILE_MIME_TYPE;
    if (ask)
        ask(path, file, type);
    return type;
}

} // namespace

std::string GuessTypeOf(int descriptor)
{
    struct stat info = {};
    if (fstat(descriptor, &info) != 0)
        return B_FILE_MIME_TYPE;
    if (S_ISDIR(info.st_mode))
        return B_DIRECTORY_MIME_TYPE;
    if (S_ISLNK(info.st_mode))
        return B_SYMLINK_MIME_TYPE;
    if (!S_ISREG(info.st_mode))
        return B_FILE_MIME_TYPE;
    // Opened anew: the descriptor may not be for reading, and its position is its owner's.
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const FileDescriptor file(open(link.c_str(), O_RDONLY | O_CLOEXEC));
    if (file.IsOpen() && IsProgram(file.Get(), info.st_mode))
        return B_APP_MIME_TYPE;
    return AskDatabase(PathOfDescriptor(descriptor), file.Get());
}
