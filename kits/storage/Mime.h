// MIME types of the platform's own kinds, and what a file is by looking at it.
#pragma once

#include "StorageDefs.h"

#include <string>

struct entry_ref;

#define B_APP_MIME_TYPE "application/x-vnd.Be-elfexecutable"
#define B_DIRECTORY_MIME_TYPE "application/x-vnd.Be-directory"
#define B_SYMLINK_MIME_TYPE "application/x-vnd.Be-symlink"
#define B_FILE_MIME_TYPE "application/octet-stream"

class BMimeType {
public:
    // B_BAD_VALUE: not a valid type; then there is none.
    status_t SetTo(const char* type);
    const char* Type() const; // NULL: none
    bool IsValid() const;

    // Whether type is a supertype ("text") or supertype and subtype ("text/plain") of allowed
    // characters, and shorter than B_MIME_TYPE_LENGTH.
    static bool IsValid(const char* type);
    // The type of a file by its kind, name and contents, a type that was set for it left aside.
    // B_BAD_VALUE: NULL; B_ENTRY_NOT_FOUND and other errors of BNode::SetTo().
    static status_t GuessMimeType(const entry_ref* file, BMimeType* type);

private:
    std::string fType;
};
