// The names of the devices of PCI buses, compiled in. The vendors and devices are those of the
// years up to 2000; sysinfo/tables/generate has made them.
#pragma once

#include <SupportDefs.h>

struct PciClassRow {
    const char* name; // null: the end
    int classId;
};

struct PciVendorRow {
    uint16 vendorId; // 0xFFFF: the end
    const char* shortName;
    const char* longName;
};

struct PciDeviceRow {
    uint16 vendorId; // 0xFFFF: the end
    uint16 deviceId;
    const char* chip;
    const char* description;
};

// The device classes, in the order in which they are listed.
extern const PciClassRow g_pci_class_list[];
// By id. The first row of an id counts.
extern const PciVendorRow g_vendor_table[];
// By vendor. The first row of a device counts.
extern const PciDeviceRow g_device_table[];
