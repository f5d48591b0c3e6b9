// The names of PCI vendors and devices in the list that the system keeps of them. Unlike the tables
// compiled in it is as new as the system, but it need not be there.
#pragma once

#include <SupportDefs.h>

#include <map>
#include <string>
#include <vector>

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
