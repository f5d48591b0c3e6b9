#include "toolkit/LibToolTips.h"

#include "toolkit/LibHelp.h"
#include "toolkit/LibTargetLock.h"

#include <Autolock.h>
#include <Messenger.h>
#include <View.h>
#include <Window.h>

#include <vector>

namespace {

BLocker& gLock = *new BLocker; // never destroyed: windows may outlive static objects
const LibHelp* gHelp GUARDED_BY(gLock) = nullptr;
bool gShow GUARDED_BY(gLock) = true;
std::vector<BMessenger> gWindows GUARDED_BY(gLock);

void Apply(BView* view, const LibHelp& help, bool show)
{
    const char* name = view->Name();
    if (const char* tip = name ? help.TipFor(name) : nullptr)
        view->SetToolTip(show ? tip : nullptr);
    for (int32 i = 0; i < view->CountChildren(); i++)
        Apply(view->ChildAt(i), help, show);
}

} // namespace

void LibSetToolTips(const LibHelp* help)
{
    const BAutolock lock(gLock);
    gHelp = help;
}

void LibApplyToolTips(BWindow* window)
{
    const LibHelp* help = nullptr;
    bool show = false;
    {
        const BAutolock lock(gLock);
        help = gHelp;
        show = gShow;
    }
    for (int32 i = 0; help && i < window->CountChildren(); i++)
        Apply(window->ChildAt(i), *help, show);
    const BAutolock lock(gLock);
    std::erase_if(gWindows, [](const BMessenger& known) { return !known.IsValid(); });
    gWindows.push_back(BMessenger(window));
}

void LibShowToolTips(bool show)
{
    std::vector<BMessenger> windows;
    {
        const BAutolock lock(gLock);
        gShow = show;
        windows.swap(gWindows);
    }
    for (const BMessenger& target : windows) {
        const LibTargetLock lock(target);
        if (lock.IsLocked())
            LibApplyToolTips(static_cast<BWindow*>(lock.Looper()));
    }
}
