#include "results/ArchiveFiles.h"

#include <OwnLibrary.h>

#include <string_view>

bool IsArchive(const std::string& bytes)
{
    constexpr size_t kTarMagicAt = 257;
    const std::string_view view = bytes;
    return view.starts_with("PK\x03\x04") || view.starts_with("PK\x05\x06")
        || view.starts_with("\x1f\x8b")
        || (view.size() > kTarMagicAt && view.substr(kTarMagicAt).starts_with("ustar"));
}

FilesOrRefusal FilesOfArchive(const std::string& bytes)
{
    const auto read = OwnFunction<decltype(&TarvexReadArchive)>("archive", "TarvexReadArchive");
    FilesOrRefusal result = "cannot be unpacked";
    if (read)
        read(bytes, result);
    return result;
}
