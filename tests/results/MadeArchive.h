// Archives as no tool makes them.
#pragma once

#include <archive.h>
#include <archive_entry.h>

#include <string>
#include <vector>

enum class Packing { kZip, kLockedZip, kTar, kTarGz };

struct ArchivedEntry {
    std::string path;
    std::string contents;
    unsigned type = AE_IFREG;
    std::string target = {}; // of a link: a symbolic one, or a hard one where type is a file's
};

inline std::string MadeArchive(Packing packing, const std::vector<ArchivedEntry>& entries)
{
    std::string bytes(32 << 20, '\0');
    size_t size = 0;
    archive* made = archive_write_new();
    if (packing == Packing::kZip || packing == Packing::kLockedZip)
        archive_write_set_format_zip(made);
    else
        archive_write_set_format_pax_restricted(made);
    archive_write_set_passphrase(made, "word");
    if (packing == Packing::kLockedZip)
        archive_write_set_options(made, "zip:encryption=zipcrypt");
    if (packing == Packing::kTarGz)
        archive_write_add_filter_gzip(made);
    archive_write_open_memory(made, bytes.data(), bytes.size(), &size);
    for (const ArchivedEntry& each : entries) {
        archive_entry* entry = archive_entry_new();
        archive_entry_set_pathname(entry, each.path.c_str());
        archive_entry_set_filetype(entry, each.type);
        archive_entry_set_perm(entry, 0600);
        archive_entry_set_size(entry, static_cast<la_int64_t>(each.contents.size()));
        archive_entry_set_mtime(entry, 1'700'000'000, 0);
        if (each.type == AE_IFLNK)
            archive_entry_set_symlink(entry, each.target.c_str());
        else if (!each.target.empty())
            archive_entry_set_hardlink(entry, each.target.c_str());
        archive_write_header(made, entry);
        archive_write_data(made, each.contents.data(), each.contents.size());
        archive_entry_free(entry);
    }
    archive_write_close(made);
    archive_write_free(made);
    bytes.resize(size);
    return bytes;
}
