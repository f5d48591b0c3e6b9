// A file, directory or link, with its attributes as values of the program's own types.
//
// Read functions return true, and set their output, only if there is such an attribute and it could
// be read whole. Write functions replace the attribute whatever it was; false if that failed.
#pragma once

#include "foundation/LibString.h"

#include <Node.h>

#include <string>

class BMessage;

class LibNode : public BNode {
public:
    LibNode() = default;
    LibNode(const char* path) : BNode(path) { }
    LibNode(const entry_ref* ref) : BNode(ref) { }
    LibNode(const BEntry* entry) : BNode(entry) { }

    bool ReadStringAttr(const char* name, LibString& value) const;
    bool WriteStringAttr(const char* name, const char* value); // false for null
    bool ReadInt32Attr(const char* name, int32& value) const;
    bool WriteInt32Attr(const char* name, const int32& value);
    bool ReadBoolAttr(const char* name, bool& value) const;
    bool WriteBoolAttr(const char* name, const bool& value);
    // A damaged message is not read.
    bool ReadMessageAttr(const char* name, BMessage& message) const;
    bool WriteMessageAttr(const char* name, const BMessage& message);

    // Stores the file or directory at path in the attribute, as a zip archive, whose temporary file
    // it names on standard error. False, with a line there, if there is none; false also if it
    // could not be packed. Changes the process's working directory.
    bool CompressFile(const char* name, const char* path);
    // Unpacks what CompressFile() stored into directory, which is made if it is missing; with
    // replace over what is there, else what is there stays. False, with a line on standard error,
    // if there is no room for temporary files; false also for no such attribute or a damaged one.
    // Leaves the process in the directory of temporary files.
    bool UncompressFile(const char* name, const char* directory, bool replace = true) const;

private:
    bool ReadWhole(const char* name, type_code type, std::string& data) const;
};
