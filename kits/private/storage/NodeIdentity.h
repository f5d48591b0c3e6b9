// Which file a name or a descriptor stands for.
#pragma once

#include "SupportDefs.h"

#include <string>

// Device, inode and time of birth, in nanoseconds since 1970, together are one file's for ever: an
// inode's number is given out again, but later.
struct NodeIdentity {
    std::string path; // real and absolute; empty where it has none any more
    uint64 inode = 0;
    int64 birth = 0; // 0: the file system keeps none
    uint64 links = 0; // names it has
    bool isProgram = false; // the file of the program that runs here, or what took its place
    int64 device = 0; // as DeviceOf() gives it; 0: not known
    uint64 mount = 0; // the system's number of the device, which is another one after a restart

    // Whether both are the same as far as their file system can tell.
    bool IsSameNode(uint64 otherInode, int64 otherBirth) const
    {
        return inode == otherInode && (birth == otherBirth || birth == 0 || otherBirth == 0);
    }
};

// Fills *identity with what name in the directory is (a link itself), or with "" what is open at
// directory. B_OK, or the error.
[[nodiscard]] status_t IdentifyNode(int directory, const std::string& name, NodeIdentity* identity);

// A number of the file system on which path, or the nearest folder above it that exists, lies: the
// same after a restart where the file system has one of its own. 0: it cannot be told.
[[nodiscard]] int64 DeviceOf(std::string path);
