// What the application's file says of the application, and the file itself.
#pragma once

#include "foundation/LibString.h"
#include "foundation/LibStringList.h"

#include <Entry.h>
#include <File.h>

// Opens the file at path, or with null that of the running application. False if it cannot be
// opened or no application runs.
bool LibOpenAppFile(const char* path, const uint32& openMode, BFile& file);

// The version as people write it, "1.2.3 Beta 4", of the application at path or, with null, of the
// running one; "" if the file does not say.
[[nodiscard]] LibString LibGetAppVersion(const char* path = nullptr);
// Records the running application's version. variety: 0 development, 1 alpha, 2 beta, 3 gamma,
// 4 gold, 5 final. The texts (null counts as "") are cut to the platform's 63 and 255 bytes. The
// file is not touched if it says the same already. False if that failed.
bool LibSetAppVersion(const uint32& major, const uint32& middle, const uint32& minor,
    const char* shortInfo, const char* longInfo, const uint32& variety, const uint32& internal);
// Sets signature, of B_MIME_TYPE_LENGTH bytes, to that of the application in the entry; "" if it is
// no executable or has none, and the result is then false.
bool LibGetAppSignature(const entry_ref& ref, char* signature);
// Appends the types of files that the running application opens to types. Returns the size of the
// list, 0 if the file names none.
int32 LibGetAppSupportedTypes(LibStringList& types);
// Records the types that the running application opens. False if that failed.
bool LibSetAppSupportedTypes(LibStringList& types);
