#include "MimeGuess.h"

#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QMimeDatabase>

#include "FileDescriptor.h"
#include "Locations.h"
#include "Mime.h"

namespace {

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
    const QMimeDatabase database;
    const QString name = QFile::decodeName(path.c_str());
    QFile contents;
    if (file < 0 || !contents.open(file, QIODevice::ReadOnly)) // no right to read it
        return database.mimeTypeForFile(name, QMimeDatabase::MatchExtension).name().toStdString();
    return database.mimeTypeForFileNameAndData(name, &contents).name().toStdString();
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
