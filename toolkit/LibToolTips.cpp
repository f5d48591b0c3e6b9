#include "toolkit/LibToolTips.h"

#include "toolkit/LibHelp.h"

#include <Messenger.h>
#include <View.h>
#include <Window.h>

#include <mutex>
#include <vector>

namespace {

std::mutex gLock; // never held while a window is locked
const LibHelp* gHelp = nullptr;
bool gShow = true;
std::vector<BMessenger> gWindows;

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
    const std::lock_guard lock(gLock);
    gHelp = help;
}

void LibApplyToolTips(BWindow* window)
{
    const LibHelp* help = nullptr;
    bool show = false;
    {
        const std::lock_guard lock(gLock);
        help = gHelp;
        show = gShow;
    }
    for (int32 i = 0; help && i < window->CountChildren(); i++)
        Apply(window->ChildAt(i), *help, show);
    const std::lock_guard lock(gLock);
    std::erase_if(gWindows, [](const BMessenger& known) { return !known.IsValid(); });
    gWindows.push_back(BMessenger(window));
}

void LibShowToolTips(bool show)
{
    std::vector<BMessenger> windows;
    {
        const std::lock_guard lock(gLock);
        gShow = show;
        windows.swap(gWindows);
    }
    for (const BMessenger& target : windows) {
        BLooper* looper = nullptr;
        if (!target.LockTarget())
            continue;
        target.Target(&looper);
        LibApplyToolTips(static_cast<BWindow*>(looper));
        looper->Unlock();
    }
}
