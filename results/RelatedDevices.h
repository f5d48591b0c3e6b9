// One line about a device of the machine that results were measured on.
#pragma once

#include "foundation/LibString.h"

#include <SupportDefs.h>

class RelatedDevices {
public:
    RelatedDevices() = default;
    RelatedDevices(const RelatedDevices& o) = default;
    virtual ~RelatedDevices() = default;
    RelatedDevices& operator=(const RelatedDevices& o) = default;
    // Devices are compared by their type alone.
    bool operator==(const RelatedDevices& o) const { return type == o.type; }
    bool operator>(const RelatedDevices& o) const { return type > o.type; }

    void Description(const int& newType, const char* text);
    // Type and text on standard error.
    void PrintToStream() const;

    int32 type = 0; // the device class, -1 for the display
    LibString description;
};
