// What the disk groups are made of, apart from its timing.
#pragma once

#include "foundation/LibString.h"

#include <OS.h>

#include <cstdio>
#include <string>

// A file that is written and read a block at a time by the C library's buffered streams, and
// removed at the end.
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
    // read is passed over: false, with the last error, unless it is all of them. noinline: what is
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

// Creates and removes a row of empty files, on a thread of its own.
//
// Idle --Go()--> waiting to be resumed --wait_for_thread()--> Idle.
class FileLife {
public:
    enum Mode { kCreate = 1, kRemove = 2 };

    FileLife() = default;
    // Ends a thread that was not waited for. Files stay.
    virtual ~FileLife();
    FileLife(const FileLife&) = delete;
    FileLife& operator=(const FileLife&) = delete;

    // The files are PREFIX.FIRST to PREFIX.LAST; none if first is above last.
    void SetPathPrefix(const char* newPrefix) { prefix = newPrefix; }
    void SetIndexRange(const long& newFirst, const long& newLast);

    // Only in Idle. Makes the thread "CreateThread" for kCreate, else "RemoveThread"; it waits for
    // wait_for_thread() or resume_thread(). Returns its id, or the kernel's error.
    thread_id Go(const int& mode);

    static int32 CreateThread(void* self);
    static int32 RemoveThread(void* self);
    // The threads' work: what cannot be made or removed is passed over and counted. A file that is
    // there is replaced, whatever it is: nothing is followed or waited for. They return 0.
    int32 Create();
    int32 Remove();

    thread_id thread = -1;
    int32 first = 0;
    int32 last = 0;
    LibString prefix;
    int32 failures = 0; // files that the last work passed over
    int32 error = 0; // errno of the first of them
};
