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

    // Only while it is closed. "wb" makes it anew: what is there is replaced, not followed or
    // waited for. "rb" opens what "wb" made, nothing else. False, and error set, if it cannot be
    // opened.
    [[nodiscard]] bool Open(const char* mode);
    // Only while it is open. False, and error set, if the last blocks could not be written.
    bool Close();

    // Only while it is open: count blocks, one call of the library each. What cannot be written or
    // read is passed over: false, with the first error, unless it is all of them. noinline: what is
    // tested is also what a run measures.
    [[gnu::noinline]] bool Write(long count);
    [[gnu::noinline]] bool Read(long count);

    const std::string path;
    int error = 0; // of errno; 0 at the end of the file

private:
    FILE* fStream = nullptr;
    bool fIsMade = false;
    char fBlock[kBlockSize] = {};
};
