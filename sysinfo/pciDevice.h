// One function of a device on the machine's PCI buses, with its names as far as they are known.
#pragma once

#include "foundation/LibString.h"

#include <SupportDefs.h>

#include <cstdio>

class pciDevice {
public:
    pciDevice() = default;
    pciDevice(const pciDevice& o) = default;
    virtual ~pciDevice() = default;
    pciDevice& operator=(const pciDevice& o) = default;
    // Devices have no order and none is another's equal.
    bool operator==(const pciDevice&) const { return false; }
    bool operator>(const pciDevice&) const { return false; }

    void VendorId(const uint16& id) { vendorId = id; }
    void DeviceId(const uint16& id) { deviceId = id; }
    void VendorShort(const char* name) { vendorShort = name; }
    void VendorLong(const char* name) { vendorLong = name; }
    void Description(const char* text) { description = text; }
    void Slot(const char* place) { slot = place; }

    // True if both names of the vendor are known.
    bool IsVendorMatched() const;
    // True if the description is known, "" included.
    bool IsDeviceMatched() const;
    // One line with ids and names.
    void Write(FILE* file) const;
    // Vendor and description on standard error.
    void PrintToStream() const;

    uint16 vendorId = 0xFFFF;
    uint16 deviceId = 0xFFFF;
    LibString vendorShort = "Unknown";
    LibString vendorLong = "Unknown";
    LibString description = "Unknown";
    LibString slot; // bus, device and function, as in "01:00.0"
};
