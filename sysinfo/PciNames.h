// The names of PCI vendors, devices and classes: those compiled in, and those that the system has.
#pragma once

#include <SupportDefs.h>

#include <map>
#include <string>
#include <vector>

// The names of the devices of PCI buses, compiled in. The vendors and devices are those of the
// years up to 2000; sysinfo/tables/generate has made them.
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

// The names of PCI vendors and devices in the list that the system keeps of them. Unlike the tables
// compiled in it is as new as the system, but it need not be there.
class PciNameList {
public:
    // Reads the system's list, or the one at path. Where it cannot be read there are no names.
    PciNameList();
    explicit PciNameList(const char* path);

    // The name, "" if there is none.
    [[nodiscard]] std::string Vendor(const uint16& vendorId) const;
    [[nodiscard]] std::string Device(const uint16& vendorId, const uint16& deviceId) const;
    // All names in alphabetical order, each once.
    [[nodiscard]] std::vector<std::string> Vendors() const;
    [[nodiscard]] std::vector<std::string> Devices(const uint16& vendorId) const;

private:
    struct VendorNames {
        std::string name;
        std::map<uint16, std::string> devices;
    };

    void Read(const char* path);

    std::map<uint16, VendorNames> vendors;
};
