// A file, directory or link as a thing with attributes: named values of any type and size, kept in
// the user's store. They belong to the file and not to its name: see store/FileTable.h for what a
// move, a replacement or an upgrade does to them. Writing them needs no right to write the file, so
// a program can keep data with itself wherever it is installed.
#pragma once

#include "Entry.h"
#include "fs_attr.h"

struct NodeIdentity;

class BNode : public BStatable {
public:
    BNode() = default; // B_NO_INIT
    // As SetTo().
    BNode(const char* path);
    BNode(const entry_ref* ref);
    BNode(const BEntry* entry);
    // A copy is another handle of the same file.

    status_t InitCheck() const; // what SetTo() returned
    status_t GetStat(struct stat* info) const override;

    // A link is taken itself, not what it points to. B_BAD_VALUE: NULL or an empty path;
    // B_ENTRY_NOT_FOUND, B_NOT_A_DIRECTORY, B_PERMISSION_DENIED ...
    status_t SetTo(const char* path);
    status_t SetTo(const entry_ref* ref);
    status_t SetTo(const BEntry* entry);
    virtual void Unset();

    // All of these: B_NO_INIT; B_BAD_VALUE: a NULL argument, an empty name or a negative offset;
    // B_NAME_TOO_LONG: name has more than 255 bytes; B_ENTRY_NOT_FOUND: no such attribute; and
    // where the store cannot be used, after a line on standard error, B_DEVICE_FULL,
    // B_READ_ONLY_DEVICE, B_PERMISSION_DENIED, B_BUSY (another program kept it for ten seconds),
    // B_UNSUPPORTED (a later version made it) or B_IO_ERROR.

    // The number of bytes read, at most length; 0 behind the end. The type plays no part.
    ssize_t ReadAttr(
        const char* name, type_code type, off_t offset, void* buffer, size_t length) const;
    // Makes the attribute if there is none. At offset 0 the bytes replace its value, at any other
    // they are written over and behind it, a gap being filled with zeros. It happens as a whole or
    // not at all, whatever ends the program. Returns length; B_BAD_VALUE: above 1,000,000,000
    // bytes.
    ssize_t WriteAttr(
        const char* name, type_code type, off_t offset, const void* buffer, size_t length);
    status_t RemoveAttr(const char* name);
    status_t GetAttrInfo(const char* name, attr_info* info) const;
    // The names in the order in which the attributes were made, one with each call; buffer has
    // B_ATTR_NAME_LENGTH bytes. B_ENTRY_NOT_FOUND at the end.
    status_t GetNextAttrName(char* buffer);

protected:
    status_t Take(int descriptor); // or -1: the error is in errno
    int Descriptor() const { return fDescriptor.Get(); }
    status_t Fail(status_t error); // leaves it unset

private:
    friend class BAppFileInfo;
    friend class BMimeType;
    friend class BNodeInfo;
    friend class BResources;

    time_t BirthTime() const override;
    status_t Identify(const char* attribute, NodeIdentity* file) const;

    status_t fStatus = B_NO_INIT;
    FileDescriptor fDescriptor;
    int64 fLastAttribute = 0; // the one GetNextAttrName() gave last
};
