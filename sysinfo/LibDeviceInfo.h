// The machine's PCI devices by class, as they were when it was made: an item for each class that
// the machine has, in the order of the class table. Devices are named by the tables compiled in.
#pragma once

#include "foundation/LinkList.h"
#include "sysinfo/pciItem.h"

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
