// A file that is written and read a block at a time by the C library's buffered streams, and
// removed at the end.
#pragma once

#include <cstdio>
#include <string>

class BlockFile {
public:
    static constexpr size_t kBlockSize = 4096;

    explicit BlockFile(const char* newPath) : path(newPath) { }
    // Closes the file and removes it, whoever made it.
    ~BlockFile();
    BlockFile(const BlockFile&) = delete;
    BlockFile& operator=(const BlockFile&) = delete;

    // Only while it is closed, with a mode of fopen(). False if it cannot be opened.
    [[nodiscard]] bool Open(const char* mode);
    // Only while it is open.
    void Close();

    // Only while it is open: count blocks, one call of the library each. What cannot be written or
    // read is passed over. noinline: what is tested is also what a run measures.
    [[gnu::noinline]] void Write(long count);
    [[gnu::noinline]] void Read(long count);

    const std::string path;

private:
    FILE* fStream = nullptr;
    char fBlock[kBlockSize] = {};
};
