#include "sysinfo/pciItem.h"

pciItem& pciItem::operator=(pciItem& o)
{
    classId = o.classId;
    type = o.type;
    devices = o.devices;
    return *this;
}

int pciItem::NumberDevicesUnknown()
{
    int count = 0;
    for (const pciDevice* device = devices.First(); device != nullptr; device = devices.Next()) {
        if (!device->IsVendorMatched() || !device->IsDeviceMatched())
            count++;
    }
    return count;
}

void pciItem::Write(FILE* file)
{
    const char* name = type;
    fprintf(file, "pci class = <%d>, type = <%s>\n", classId, name);
    for (const pciDevice* device = devices.First(); device != nullptr; device = devices.Next())
        device->Write(file);
    fprintf(file, "\n");
}

void pciItem::PrintToStream()
{
    const char* name = type;
    fprintf(stderr, "pci %x, type %s\n", static_cast<unsigned>(classId), name);
    for (const pciDevice* device = devices.First(); device != nullptr; device = devices.Next())
        device->PrintToStream();
}
