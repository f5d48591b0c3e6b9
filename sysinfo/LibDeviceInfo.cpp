#include "sysinfo/LibDeviceInfo.h"

#include "sysinfo/PciNames.h"

#include <PCI.h>

#include <iterator>
#include <memory>

namespace {

// The constructor's word for names that no table had.
bool IsKnown(const LibString& name)
{
    return name.Compare("Unknown") != 0;
}

} // namespace

bool pciDevice::IsVendorMatched() const
{
    return IsKnown(vendorShort) && IsKnown(vendorLong);
}

bool pciDevice::IsDeviceMatched() const
{
    return IsKnown(description);
}

void pciDevice::Write(FILE* file) const
{
    const char* shortName = vendorShort;
    const char* longName = vendorLong;
    const char* text = description;
    fprintf(file, "Vendor id <0x%4.4X>, Device id <0x%4.4X>, Vendor <%s,%s>, Device <%s>\n",
        vendorId, deviceId, shortName, longName, text);
}

void pciDevice::PrintToStream() const
{
    const char* vendor = vendorLong;
    const char* text = description;
    fprintf(stderr, "\tvendor <%s>, desc <%s>\n", vendor, text);
}

// Not from a const item: to copy its list moves the cursor.
pciItem& pciItem::operator=(pciItem& o) = default;

int pciItem::NumberDevicesUnknown() const
{
    int count = 0;
    for (const pciDevice& device : devices) {
        if (!device.IsVendorMatched() || !device.IsDeviceMatched())
            count++;
    }
    return count;
}

void pciItem::Write(FILE* file) const
{
    const char* name = type;
    fprintf(file, "pci class = <%d>, type = <%s>\n", classId, name);
    for (const pciDevice& device : devices)
        device.Write(file);
    fprintf(file, "\n");
}

void pciItem::PrintToStream() const
{
    const char* name = type;
    fprintf(stderr, "pci %x, type %s\n", static_cast<unsigned>(classId), name);
    for (const pciDevice& device : devices)
        device.PrintToStream();
}

namespace {

// An empty slot answers with this id, so no vendor has it.
constexpr uint16 kEndOfTable = 0xFFFF;

const PciVendorRow* FindVendor(uint16 vendorId)
{
    // Row by row: of an id that stands there twice the first row counts.
    for (const PciVendorRow* row = g_vendor_table; row->vendorId < kEndOfTable; row++) {
        if (row->vendorId == vendorId)
            return row;
    }
    return nullptr;
}

const PciDeviceRow* FindRow(uint16 vendorId, uint16 deviceId)
{
    for (const PciDeviceRow* row = g_device_table; row->vendorId < kEndOfTable; row++) {
        if (row->vendorId == vendorId && row->deviceId == deviceId)
            return row;
    }
    return nullptr;
}

} // namespace

void LibDeviceInfo::pciDevices()
{
    // The items have the order of this table, so the buses are walked once for each class.
    for (const PciClassRow* row = g_pci_class_list; row->name; row++) {
        if (NumberPciDecices(row->classId) == 0)
            continue;
        auto item = std::make_unique<pciItem>(row->classId);
        item->Type(row->name);
        ObtainPciDevices(row->classId, item.get());
        Insert(std::move(item));
    }
}

status_t LibDeviceInfo::ObtainPciDevices(const int& classId, pciItem* item)
{
    status_t status;
    pci_info info;
    for (long i = 0; (status = get_nth_pci_info(i, &info)) == B_OK; i++) {
        if (info.class_base != classId)
            continue;
        auto device = std::make_unique<pciDevice>();
        device->VendorId(info.vendor_id);
        device->DeviceId(info.device_id);
        LibString slot;
        slot.Formatted("%2.2x:%2.2x.%d", info.bus, info.device, info.function);
        device->Slot(slot);
        device->subclass = info.class_sub;
        if ((info.header_type & PCI_header_type_mask) == PCI_header_type_generic) {
            device->boardVendorId = info.u.h0.subsystem_vendor_id;
            device->boardId = info.u.h0.subsystem_id;
        }
        // A device whose names stay "Unknown" is listed too: its ids alone tell what to look for.
        GetDevice(device.get());
        item->devices.Insert(std::move(device));
    }
    return status;
}

void LibDeviceInfo::GetDevice(pciDevice* device) const
{
    if (const PciVendorRow* vendor = FindVendor(device->vendorId)) {
        device->VendorShort(vendor->shortName);
        device->VendorLong(vendor->longName);
    }
    // Of some devices only the chip is known.
    if (const PciDeviceRow* row = FindRow(device->vendorId, device->deviceId))
        device->Description(row->description[0] != 0 ? row->description : row->chip);
}

bool LibDeviceInfo::FindDevice(const int& classId, LibString& out)
{
    const pciItem wanted(classId);
    const pciItem* item = Get(&wanted);
    if (!item || item->devices.Size() == 0)
        return false;
    const pciDevice& device = *item->devices.begin();
    out = device.vendorLong;
    out.Concat(", ");
    out.Concat(device.description);
    return true;
}

bool LibDeviceInfo::NextClassId(int& index, int& classId, LibString& name) const
{
    int rows = 0;
    while (g_pci_class_list[rows].name)
        rows++;
    if (index < 0 || index >= rows)
        return false;
    classId = g_pci_class_list[index].classId;
    name = g_pci_class_list[index].name;
    index++;
    return true;
}

int LibDeviceInfo::NumberPciDecices(const int& classId) const
{
    int found = 0;
    pci_info info;
    for (long i = 0; get_nth_pci_info(i, &info) == B_OK; i++) {
        if (info.class_base == classId)
            found++;
    }
    return found;
}

bool LibDeviceInfo::AllDevicesKnown()
{
    for (const pciItem* item = First(); item; item = Next()) {
        if (!item->AllDevicesKnown())
            return false;
    }
    return true;
}

void LibDeviceInfo::PrintToStream() const
{
    for (const pciItem& item : *this)
        item.PrintToStream();
}
