// Which file a name or a descriptor stands for.
#pragma once

#include <string>

#include "SupportDefs.h"

// Inode and time of birth, in nanoseconds since 1970, together are one file's for ever: an inode's
// number is given out again, but later. The device's number would say nothing, it changes from one
// start of the system to the next.
struct NodeIdentity {
    std::string path; // real and absolute; empty where it has none any more
    uint64 inode = 0;
    int64 birth = 0; // 0: the file system keeps none
    uint64 links = 0; // names it has
    bool isProgram = false; // a file that can be executed
};

// Fills *identity with what name in the directory is (a link itself), or with "" what is open at
// directory. B_OK, or the error.
[[nodiscard]] status_t IdentifyNode(int directory, const std::string& name, NodeIdentity* identity);
