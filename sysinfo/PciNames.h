// The names of PCI vendors, devices and classes: those compiled in, and those that the system has.
#pragma once

#include <SupportDefs.h>

#include <map>
#include <optional>
#include <string>
#include <string_view>
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

// A name in such a list, with the names that stand below it by their ids.
struct PciName {
    std::string name;
    std::map<uint32, PciName> below;
};

// A line that has a name: "\t1229  Ethernet Pro 100" stands behind one tab and has the id 0x1229.
struct PciNameLine {
    size_t tabs = 0; // 0 to 2
    bool isClass = false; // "C 02  Network controller", or the caller's word for lines behind tabs
    uint32 id = 0; // of a subsystem: its vendor's in the upper half
    std::string_view name; // in the line
};

// Empty if the line has none. inClasses: the last line without a tab was that of a class.
[[nodiscard]] std::optional<PciNameLine> ParsePciName(std::string_view line, bool inClasses);

// The names of PCI vendors, devices and classes in a list like the one that the system keeps of
// them. Unlike the tables compiled in that is as new as the system, but it need not be there.
class PciNameList {
public:
    // Reads the system's list. Where it cannot be read there are no names.
    PciNameList();
    // Reads the list that the text is. What is damaged is left out, with all that stands below it;
    // of an id that stands there twice the first name counts.
    explicit PciNameList(std::string_view text) { Read(text); }

    // The name, "" if there is none.
    [[nodiscard]] std::string Vendor(const uint16& vendorId) const;
    [[nodiscard]] std::string Device(const uint16& vendorId, const uint16& deviceId) const;
    // What the maker of the board on which the device is calls that.
    [[nodiscard]] std::string Subsystem(const uint16& vendorId, const uint16& deviceId,
        const uint16& boardVendorId, const uint16& boardId) const;
    // "Network controller, Ethernet controller"; the first part alone where only that is known.
    [[nodiscard]] std::string Class(const uint8& base, const uint8& sub) const;
    // All names in alphabetical order, each once.
    [[nodiscard]] std::vector<std::string> Vendors() const;
    [[nodiscard]] std::vector<std::string> Devices(const uint16& vendorId) const;
    // The number of the first line, from 1, that is neither a name nor a comment; 0 if all are.
    [[nodiscard]] size_t FirstDamaged() const { return firstDamaged; }

private:
    void Read(std::string_view text);

    PciName vendors;
    PciName classes;
    size_t firstDamaged = 0;
};
