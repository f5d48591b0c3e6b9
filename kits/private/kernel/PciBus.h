// What the system tells about the devices on its PCI buses. Nothing else reads it.
#pragma once

#include "PCI.h"

#include <string>
#include <vector>

namespace kernel {
// A function's place, in the order in which functions are counted.
struct PciPlace {
    uint32 domain = 0;
    uint8 bus = 0;
    uint8 device = 0;
    uint8 function = 0;

    auto operator<=>(const PciPlace&) const = default;
};

// The place in a name like "0000:00:1f.2"; false if the name is another.
[[nodiscard]] bool ParsePciPlace(const std::string& name, PciPlace& place);

// The functions below root/sys (root "": the running system), in order.
[[nodiscard]] std::vector<PciPlace> ListPciPlaces(const std::string& root);

// Reads one of them; false if there is none that can be read.
[[nodiscard]] bool ReadPciInfo(const std::string& root, const PciPlace& place, pci_info& info);
} // namespace kernel
