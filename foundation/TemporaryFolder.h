// A folder for temporary files that no other program uses. At the end of a block it is gone, with
// all in it, and a process that the tools left in it is back in the folder that it was in before.
#pragma once

#include <Path.h>

class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    // Null if it could not be made.
    [[nodiscard]] const char* Path() const { return exists ? path.Path() : nullptr; }

private:
    BPath path;
    BPath before; // the working directory
    bool exists = false;
};
