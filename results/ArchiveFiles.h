// What lies in an archive, read into memory: nothing is ever unpacked onto the disk.
#pragma once

#include <cstddef>
#include <ctime>
#include <string>
#include <variant>
#include <vector>

struct ArchivedFile {
    std::string path; // in the archive, relative and without ".."
    std::string contents;
    std::time_t modified = 0; // 0: not known
};

inline constexpr int kArchivesWithin = 2; // each other: the window packs a tar into a zip
inline constexpr size_t kMostUnpacked = 10 << 20; // bytes of all files of an archive together

// Whether the bytes begin like a zip, a tar or a compressed (gzip) one.
[[nodiscard]] bool IsArchive(const std::string& bytes);

// All files of an archive, or one line without its end that says what is wrong with it: damaged,
// encrypted, more than kMostUnpacked, a link or a device, a path that is absolute or leads upward.
using FilesOrRefusal = std::variant<std::vector<ArchivedFile>, std::string>;
[[nodiscard]] FilesOrRefusal FilesOfArchive(const std::string& bytes);

// The same in a library that is loaded at the first archive: what unpacks them brings a dozen more.
extern "C" void TarvexReadArchive(const std::string& bytes, FilesOrRefusal& result);
