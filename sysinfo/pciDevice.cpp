#include "sysinfo/pciDevice.h"

namespace {

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
