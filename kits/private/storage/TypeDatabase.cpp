#include "TypeDatabase.h"

#include <QFile>
#include <QMimeDatabase>

namespace {

QMimeType TypeOf(const std::string& path, int file)
{
    const QMimeDatabase database;
    const QString name = QFile::decodeName(path.c_str());
    QFile contents;
    if (file < 0 || !contents.open(file, QIODevice::ReadOnly)) // no right to read it
        return database.mimeTypeForFile(name, QMimeDatabase::MatchExtension);
    return database.mimeTypeForFileNameAndData(name, &contents);
}

} // namespace

extern "C" void tarvex_ask_type_database(const std::string& path, int file, std::string& type)
{
    type = TypeOf(path, file).name().toStdString();
}
