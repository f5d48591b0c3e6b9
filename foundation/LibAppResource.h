// What is kept in the resources of a file.
#pragma once

#include "foundation/LibString.h"

#include <File.h>
#include <GraphicsDefs.h>
#include <Rect.h>
#include <Resources.h>

class BBitmap;

// Files packed as zip archives into the resources of a file, under an id that the caller chooses.
// If the resource file cannot be opened nothing is found and nothing can be added.
//
// Packing and unpacking change the process's working directory: one thread at a time.
class LibAppResource : public BResources {
public:
    // Of the running application's own file, or of the one at path, opened with openMode.
    explicit LibAppResource(const uint32& openMode);
    LibAppResource(const char* path, const uint32& openMode);

    // Packs the file or directory at path into the resource id, in place of what is there, under
    // name (null: the leaf of path). level: 0 (stored) to 9 (smallest). False, with
    // a line on standard error if nothing could be packed, and false if it could not be added.
    bool AddEntry(const char* path, const int32& id, const char* name, const int& level = 9);
    // Writes the archive in the resource to path or, with unzip, what was packed, with its MIME
    // type set. False, with a line on standard error if there is no room for temporary files;
    // true, and nothing happens, if there is no such resource.
    bool ExtractEntry(const int32& id, const char* path, bool unzip);
    // The text of a string resource, which the caller frees with delete[]; null if there is none.
    [[nodiscard]] char* FindString(const int32& id);
    // Copies a resource with its name into target, in place of one with that id. Always true, also
    // if there is no such resource, when target stays as it was.
    bool CopyResource(const int32& id, const uint32& type, LibAppResource& target);

private:
    bool AddArchive(BFile& archive, int32 id, const char* name);
    bool WriteArchive(int32 id, const char* path);

    BFile file;
};

// Single values in a resource file. Every function returns true if there is a resource of that id
// and type, and of the size of the value; else the output stays as it was.

// Copies the text and its end mark into text, which must have room for them.
bool LibFindStringResource(BResources& resources, const int32& id, char* text);
bool LibFindLongResource(BResources& resources, const int32& id, int32& value);
bool LibFindShortResource(BResources& resources, const int32& id, int8& value); // one byte
bool LibFindBoolResource(BResources& resources, const int32& id, bool& value); // one byte
bool LibFindRGBResource(BResources& resources, const int32& id, rgb_color& color);
bool LibFindRectResource(BResources& resources, const int32& id, BRect& rect);

// Strings and bitmaps kept in the running application's own file, found by name. Without a running
// application, or if its file cannot be opened, nothing is found and nothing can be kept.
class qResources : public BResources {
public:
    explicit qResources(const uint32& openMode); // of the file, as BFile takes it
    ~qResources() override;

    // The text, or "" if there is no such string.
    [[nodiscard]] LibString GetString(const char* name);
    [[nodiscard]] bool HasString(const char* name);
    // Keeps text under name, in place of a string of that name; a new one gets the lowest free id.
    // Null names and texts are not kept.
    void SetString(const char* name, const char* text);
    // A new bitmap that the caller deletes; null if there is none or it is damaged.
    [[nodiscard]] BBitmap* GetBitmap(const char* name);

    // The lowest id, from 0 on, that a resource of that type has. Does not return if no resource
    // of the type has an id of 0 or more.
    [[nodiscard]] int32 GetNextId(const uint32& type);

    // Writes what was changed and lets go of the file.
    void Close();
};
