// Creates and removes a row of empty files, on a thread of its own.
#pragma once

#include "foundation/LibString.h"

#include <OS.h>

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
