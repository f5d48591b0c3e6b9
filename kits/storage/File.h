// An open file with its position.
#pragma once

#include "Node.h"

class BFile : public BNode {
public:
    BFile() = default; // B_NO_INIT
    // As SetTo().
    BFile(const char* path, uint32 openMode);
    // A copy is of the same open file: they share the position.

    // Links are followed. openMode is put together from the modes of StorageDefs.h. B_BAD_VALUE:
    // NULL or an empty path; B_ENTRY_NOT_FOUND; B_FILE_EXISTS; B_IS_A_DIRECTORY;
    // B_PERMISSION_DENIED ... The program's own file can be opened for writing although this
    // system lets nobody change the bytes of a running program: its attributes and resources can be
    // written then, and Write() gives the error (B_BUSY or B_PERMISSION_DENIED).
    status_t SetTo(const char* path, uint32 openMode);
    status_t SetTo(const entry_ref* ref, uint32 openMode);
    status_t SetTo(const BEntry* entry, uint32 openMode);

    bool IsWritable() const;

    // The number of bytes, which is below length only at the end of the file or when the disk is
    // full, or an error. Both move the position.
    ssize_t Read(void* buffer, size_t length);
    ssize_t Write(const void* buffer, size_t length);

    // Moves the position by SEEK_SET, SEEK_CUR or SEEK_END; beyond the end is allowed. The new one,
    // or B_BAD_VALUE, and it is where it was.
    off_t Seek(off_t offset, uint32 seekMode);

private:
    status_t CanWrite(const void* buffer) const;
    status_t Open(int base, const char* path, uint32 openMode);
    status_t OpenOwnProgram(int base, const char* path, status_t error);

    uint32 fMode = 0;
    status_t fWriteStatus = B_OK; // why its bytes cannot be written although it was opened so
};
