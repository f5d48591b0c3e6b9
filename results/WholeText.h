// What a user hands over to be read as a whole: results, the JSON of a run or an archive.
#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

inline constexpr size_t kMostBytes = 32 << 20; // of each; the longest runs have a fifth of that

struct CloseFile {
    void operator()(FILE* file) const { fclose(file); }
};
using OpenFile = std::unique_ptr<FILE, CloseFile>;

// The rest of a file, and of one with more than kMostBytes as much as tells that. What could not be
// read is left out: ask ferror().
[[nodiscard]] std::string ReadAll(FILE* file);
