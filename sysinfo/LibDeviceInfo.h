// The machine's PCI devices.
#pragma once

#include "foundation/LibString.h"
#include "foundation/LinkList.h"

#include <SupportDefs.h>

#include <cstdio>

// One function of a device on the machine's PCI buses, with its names as far as they are known.
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
    // Beyond its item's class, as the system's list of names has them.
    uint8 subclass = 0;
    uint16 boardVendorId = 0; // of the board that the device is on; 0 where that has no ids
    uint16 boardId = 0;
};

// A class of PCI devices that the machine has, with its devices in the order of the buses.
class pciItem {
public:
    pciItem() = default;
    explicit pciItem(const int& id) : classId(id) { }
    // Copies also the devices. Moves o's cursor.
    pciItem(pciItem& o) { *this = o; }
    virtual ~pciItem() = default;
    pciItem& operator=(pciItem& o);
    // Items are compared by their class alone.
    bool operator==(const pciItem& o) const { return classId == o.classId; }
    bool operator>(const pciItem& o) const { return classId > o.classId; }

    void ClassId(const int& id) { classId = id; }
    void Type(const char* name) { type = name; }

    // How many devices lack a name.
    int NumberDevicesUnknown() const;
    bool AllDevicesKnown() const { return NumberDevicesUnknown() == 0; }
    // A line for the class, one for each device and an empty one.
    void Write(FILE* file) const;
    // Class and devices on standard error.
    void PrintToStream() const;

    int classId = 0;
    LibString type; // the class's name
    LinkList<pciDevice> devices;
};

// The machine's PCI devices by class, as they were when it was made: an item for each class that
// the machine has, in the order of the class table. Devices are named by the tables compiled in.
class LibDeviceInfo : public LinkList<pciItem> {
public:
    // Reads the buses. A machine without any has no items.
    LibDeviceInfo() { pciDevices(); }
    ~LibDeviceInfo() override = default;

    // Appends an item for each class on the buses.
    void pciDevices();
    // Appends all devices of the class to item. Returns the status that ended the walk.
    status_t ObtainPciDevices(const int& classId, pciItem* item);
    // Sets the names that the tables have for the device's ids and leaves the others.
    void GetDevice(pciDevice* device) const;

    // Sets out to "vendor, description" of the first device of a class; false, and out as it was,
    // if there is none. Moves the cursor.
    bool FindDevice(const int& classId, LibString& out);
    // Sets classId and name from row index of the class table and moves index on; false, and
    // nothing changes, if there is no such row. Start with 0.
    bool NextClassId(int& index, int& classId, LibString& name) const;
    // How many devices of this class are on the buses.
    int NumberPciDecices(const int& classId) const;
    // False if a device lacks a name: the cursor is then on the first item that has such a device.
    bool AllDevicesKnown();
    // All classes and devices on standard error.
    void PrintToStream() const;
};
