// Strings and bitmaps kept in the running application's own file, found by name. Without a running
// application, or if its file cannot be opened, nothing is found and nothing can be kept.
#pragma once

#include "foundation/LibString.h"

#include <Resources.h>

class BBitmap;

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
