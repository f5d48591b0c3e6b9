// A class of PCI devices that the machine has, with its devices in the order of the buses.
#pragma once

#include "foundation/LibString.h"
#include "foundation/LinkList.h"
#include "sysinfo/pciDevice.h"

#include <cstdio>

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
