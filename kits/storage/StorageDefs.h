// Limits and modes of the storage kit. Lengths are in bytes, the NUL at the end included.
#pragma once

#include "SupportDefs.h"

#include <fcntl.h>

constexpr int32 B_FILE_NAME_LENGTH = 256;
constexpr int32 B_PATH_NAME_LENGTH = 4096;
constexpr int32 B_ATTR_NAME_LENGTH = B_FILE_NAME_LENGTH;
constexpr int32 B_MIME_TYPE_LENGTH = 240;

// How a BFile is opened: one of the first three, and any of the others.
enum {
    B_READ_ONLY = O_RDONLY,
    B_WRITE_ONLY = O_WRONLY,
    B_READ_WRITE = O_RDWR,
    B_FAIL_IF_EXISTS = O_EXCL, // with B_CREATE_FILE
    B_CREATE_FILE = O_CREAT, // unless it exists
    B_ERASE_FILE = O_TRUNC,
    B_OPEN_AT_END = O_APPEND, // starts at the end; writing elsewhere is not prevented
};

// What kinds of entries BDirectory::Contains() accepts.
enum node_flavor {
    B_FILE_NODE = 1,
    B_SYMLINK_NODE = 2,
    B_DIRECTORY_NODE = 4,
    B_ANY_NODE = 7,
};
