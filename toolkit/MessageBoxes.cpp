#include "toolkit/MessageBoxes.h"

#include <Alert.h>
#include <AppDefs.h>
#include <Autolock.h>
#include <Messenger.h>

#include <vector>

namespace {

BLocker& gLock = *new BLocker; // never destroyed: windows may outlive static objects
std::vector<BMessenger> gWaiting GUARDED_BY(gLock);

void Show(const char* title, const char* text, alert_type kind)
{
    BAlert* alert =
        new BAlert(title, text, "OK", nullptr, nullptr, B_WIDTH_AS_USUAL, B_OFFSET_SPACING, kind);
    alert->SetShortcut(0, B_ESCAPE);
    // One button: there is nothing to tell apart.
    static_cast<void>(LibAnswer(alert));
}

} // namespace

void LibError(const char* text)
{
    Show("Error", text, B_STOP_ALERT);
}

void LibInfo(const char* text)
{
    Show("Information", text, B_INFO_ALERT);
}

void LibWarning(const char* text)
{
    Show("Warning", text, B_WARNING_ALERT);
}

int32 LibAnswer(BAlert* alert)
{
    alert->SetFlags(alert->Flags() & ~(B_NOT_CLOSABLE)); // who just wants to be rid of it
    // The alert deletes itself: after Go() only its address is left.
    const BMessenger address(alert);
    {
        const BAutolock lock(gLock);
        gWaiting.push_back(address);
    }
    const int32 answer = alert->Go();
    const BAutolock lock(gLock);
    std::erase(gWaiting, address);
    return answer;
}

void LibCloseAlerts()
{
    std::vector<BMessenger> waiting;
    {
        const BAutolock lock(gLock);
        waiting = gWaiting;
    }
    // Without the lock: whoever gets his answer takes it.
    for (const BMessenger& alert : waiting)
        alert.SendMessage(B_QUIT_REQUESTED);
}
