// The names that the user gave to PCI devices which the tables compiled in do not know.
#pragma once

#include "sysinfo/PciNames.h"

#include <string>
#include <vector>

class LibDeviceInfo;

// They lie in the file "pci.ids" of the user's data (see UserData.h), in the format of the system's
// list, so that they can be edited, and lines of that file taken from there. "" and "Unknown" are
// no names.
class TypedPciNames {
public:
    // Reads them. A file that is there and cannot be read, or has a damaged line, is named on
    // standard error, but not twice in a row.
    TypedPciNames();

    // The name, "" if there is none.
    [[nodiscard]] std::string Vendor(const uint16& vendorId) const;
    [[nodiscard]] std::string Device(const uint16& vendorId, const uint16& deviceId) const;
    // Gives the devices of info these names in place of those that they lack, and returns the
    // devices that got one, a line each: "Network 00:03.0: Vendor, Device".
    std::vector<std::string> GiveTo(LibDeviceInfo& info) const;

    // Remembers a name in place of what was there; without one there is none from here on.
    void SetVendor(const uint16& vendorId, const std::string& name);
    void SetDevice(const uint16& vendorId, const uint16& deviceId, const std::string& name);
    // Writes what was changed; all other lines stay as they are. False, with a line on standard
    // error, if it cannot; a file that could not be read is not replaced.
    bool Save();

    // Whether the user wants them to stand in results. At first they do not.
    [[nodiscard]] static bool AreForResults();
    // Remembers it; false, with a line on standard error, if it cannot.
    static bool SetForResults(bool wanted);

private:
    size_t Find(size_t first, size_t tabs, uint16 id) const;
    size_t MakeVendor(uint16 vendorId);
    void Erase(size_t line);
    auto At(size_t line) { return lines.begin() + static_cast<ptrdiff_t>(line); }

    std::vector<std::string> lines;
    bool isReadable = true;
    bool isChanged = false;
    PciNameList names; // of the lines as they were read
};
