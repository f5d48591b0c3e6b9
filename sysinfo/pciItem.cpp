#include "sysinfo/pciItem.h"

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
