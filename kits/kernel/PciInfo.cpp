#include "PCI.h"

#include "KillGuard.h"
#include "LeafLock.h"
#include "PciBus.h"
#include "Processors.h"

namespace {
// The functions as last read. A walk asks for each of them once, and every reading of a
// configuration wakes a device that sleeps: so they are read again only when others are there.
struct Snapshot {
    Mutex lock;
    bool isRead GUARDED_BY(lock) = false;
    std::string root GUARDED_BY(lock);
    std::vector<kernel::PciPlace> places GUARDED_BY(lock);
    std::vector<pci_info> infos GUARDED_BY(lock);
};

Snapshot& TheSnapshot()
{
    static Snapshot* const sSnapshot = new Snapshot; // other threads may outlive static objects
    return *sSnapshot;
}

void Refresh(Snapshot& snapshot, const std::string& root) REQUIRES(snapshot.lock)
{
    auto places = kernel::ListPciPlaces(root);
    if (snapshot.isRead && root == snapshot.root && places == snapshot.places)
        return;
    snapshot.infos.clear();
    for (const kernel::PciPlace& place : places) {
        pci_info info;
        if (kernel::ReadPciInfo(root, place, info))
            snapshot.infos.push_back(info);
    }
    snapshot.root = root;
    snapshot.places = std::move(places);
    snapshot.isRead = true;
}
} // namespace

status_t get_nth_pci_info(long index, pci_info* info)
{
    CheckKilled();
    if (!info)
        return B_BAD_VALUE;
    const std::string root = kernel::Processors::Get()->Root();
    Snapshot& snapshot = TheSnapshot();
    const LeafLock lock(snapshot.lock);
    if (index == 0 || !snapshot.isRead || root != snapshot.root)
        Refresh(snapshot, root);
    const auto place = static_cast<size_t>(index); // a negative one is behind all
    if (place >= snapshot.infos.size())
        return B_ERROR;
    *info = snapshot.infos[place];
    return B_OK;
}
