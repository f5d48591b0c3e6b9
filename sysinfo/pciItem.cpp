#include "sysinfo/pciItem.h"

pciItem& pciItem::operator=(pciItem& o)
{
    classId = o.classId;
    type = o.type;
    devices = o.devices;
    return *this;
}

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
