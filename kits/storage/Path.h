// An absolute path, whether there is something at it or not. A path is taken as it is given unless
// it is relative, ends in a slash, has two slashes in a row or an element "." or "..": then it is
// normalized, for which its directory must exist. Normalizing follows links in the directory, never
// in the last element.
#pragma once

#include "SupportDefs.h"

#include <string>

class BDirectory;
struct entry_ref;

class BPath {
public:
    BPath() = default; // B_NO_INIT
    BPath(const char* path, const char* leaf = nullptr, bool normalize = false);
    BPath(const BDirectory* directory, const char* leaf = nullptr, bool normalize = false);
    BPath(const entry_ref* ref);

    // B_OK, or why there is no path: what the last SetTo() or Append() returned.
    status_t InitCheck() const;

    // The path, or the path of the directory, and behind it leaf (which may have several elements)
    // if there is one. B_BAD_VALUE: path is NULL or empty, or leaf starts with a slash; when
    // normalizing B_ENTRY_NOT_FOUND or B_NOT_A_DIRECTORY: there is no such directory; then there is
    // no path any more.
    status_t SetTo(const char* path, const char* leaf = nullptr, bool normalize = false);
    status_t SetTo(const BDirectory* directory, const char* leaf = nullptr, bool normalize = false);
    status_t SetTo(const entry_ref* ref);
    void Unset();

    // Puts path behind this one. B_BAD_VALUE also where there is none yet; else as SetTo().
    status_t Append(const char* path, bool normalize = false);

    // NULL without a path. Good until the object changes.
    const char* Path() const;
    const char* Leaf() const; // the last element, "" of the root

    // The path without its last element. B_ENTRY_NOT_FOUND: this is the root; B_NO_INIT;
    // B_BAD_VALUE: path is NULL. May be the object itself.
    status_t GetParent(BPath* path) const;

    bool operator==(const BPath& path) const; // the same text, or both without a path
    bool operator==(const char* path) const; // what a BPath of that text is equal to

private:
    status_t Take(const std::string& path, bool normalize);

    status_t fStatus = B_NO_INIT;
    std::string fPath; // empty unless fStatus is B_OK
};
