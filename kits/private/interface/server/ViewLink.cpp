#include "server/ViewPeer.h"

#include "AppDefs.h"
#include "InterfaceDefs.h"
#include "LeafLock.h"
#include "Message.h"
#include "MessageDelivery.h"

ViewLink::ViewLink(std::shared_ptr<WindowLink> window, const BMessenger& view, uint32 viewFlags)
    : flags(viewFlags), fWindow(std::move(window)), fView(view)
{
}

void ViewLink::Post(const BMessage& message) const
{
    PostAlways(fView, message);
}

void ViewLink::PostLatest(const BMessage& message) const
{
    ::PostLatest(fView, message);
}

void ViewLink::AddDirty(BRect rect)
{
    if (!(flags & B_WILL_DRAW) || !rect.IsValid())
        return;
    {
        const LeafLock lock(fLock);
        fDirty = fDirty.IsValid() ? fDirty | rect : rect;
    }
    if (!fWindow->updatePosted.exchange(true))
        PostAlways(fWindow->window, BMessage(_UPDATE_));
}

BRect ViewLink::TakeDirty()
{
    const LeafLock lock(fLock);
    const BRect dirty = fDirty;
    fDirty = BRect();
    return dirty;
}
