// A descriptor that is closed with its owner.
#pragma once

#include "SupportDefs.h"

#include <utility>

class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor) : fDescriptor(descriptor) { }
    FileDescriptor(const FileDescriptor& other); // duplicates; -1 where that fails
    FileDescriptor(FileDescriptor&& other) noexcept;
    FileDescriptor& operator=(FileDescriptor other) noexcept;
    ~FileDescriptor();

    int Get() const { return fDescriptor; } // -1: none
    bool IsOpen() const { return fDescriptor >= 0; }
    int Release() { return std::exchange(fDescriptor, -1); } // the caller closes it, or nobody

private:
    int fDescriptor = -1;
};

// How an error of the system is told in the platform's codes: the status for a value of errno,
// B_ERROR for those without one of their own.
[[nodiscard]] status_t StatusOfErrno(int error);
// The status for errno as it stands.
[[nodiscard]] status_t StatusOfErrno();
