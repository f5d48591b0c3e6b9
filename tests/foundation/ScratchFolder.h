#pragma once

#include "foundation/LibFiles.h"
#include "foundation/LibString.h"
#include "tests/support/TempFolder.h"

// A folder of the test's own that is the working directory meanwhile. The user's store and trash
// are those of the test program.
class ScratchFolder : public TempFolder {
public:
    ScratchFolder()
    {
        DataHome();
        std::filesystem::current_path(Path());
    }
    ~ScratchFolder() { std::filesystem::current_path("/"); }
};

inline std::string Text(const LibString& text)
{
    return static_cast<const char*>(text);
}

// The MIME type of the file, or what describe makes of it; "(none)" where there is no such file.
inline std::string TypeOf(const std::string& path, bool describe = false)
{
    entry_ref ref;
    char type[B_MIME_TYPE_LENGTH];
    const bool exists = get_ref_for_path(path.c_str(), &ref) == B_OK;
    return exists && LibGetMimeType(ref, type, describe) ? type : "(none)";
}
