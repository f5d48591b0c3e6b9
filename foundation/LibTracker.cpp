#include "foundation/LibTracker.h"

#include <AppDefs.h>
#include <Entry.h>
#include <Message.h>
#include <Messenger.h>

namespace {

constexpr char kTracker[] = "application/x-vnd.Be-TRAK";
constexpr uint32 kGetInfo = 'Tinf';

bool Ask(uint32 request, const char* path)
{
    entry_ref ref;
    if (get_ref_for_path(path, &ref) != B_OK)
        return false;
    BMessage message(request);
    message.AddRef("refs", &ref);
    return BMessenger(kTracker).SendMessage(&message) == B_OK;
}

} // namespace

bool LibInfoEntry(const char* path)
{
    return Ask(kGetInfo, path);
}

bool LibOpenEntry(const char* path)
{
    return Ask(B_REFS_RECEIVED, path);
}
