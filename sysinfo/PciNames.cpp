#include "sysinfo/PciNames.h"

#include <charconv>
#include <fstream>
#include <set>
#include <string_view>

namespace {

constexpr const char* kSystemLists[] = { "/usr/share/misc/pci.ids", "/usr/share/hwdata/pci.ids" };

// Takes "8086  Intel Corporation" apart.
bool ParseLine(std::string_view line, uint16& id, std::string& name)
{
    // Behind four digits and two blanks.
    constexpr size_t kNameAt = 6;
    if (line.size() <= kNameAt || line.substr(4, 2) != "  ")
        return false;
    const auto [end, error] = std::from_chars(line.data(), line.data() + 4, id, 16);
    if (error != std::errc() || end != line.data() + 4)
        return false;
    // A list that was copied from another system ends its lines with "\r".
    const size_t last = line.find_last_not_of(" \r");
    name = line.substr(kNameAt, last - kNameAt + 1);
    return !name.empty();
}

} // namespace

PciNameList::PciNameList()
{
    // The distributions keep the same list in different places; where both are there, one is
    // enough.
    for (const char* path : kSystemLists) {
        if (vendors.empty())
            Read(path);
    }
}

PciNameList::PciNameList(const char* path)
{
    Read(path);
}

// A vendor stands at the start of a line, its devices behind one tab, and behind two what the list
// has beyond that. The vendors are followed by the classes, which begin with a letter.
void PciNameList::Read(const char* path)
{
    std::ifstream lines(path);
    VendorNames* vendor = nullptr;
    for (std::string line; std::getline(lines, line) && !line.starts_with("C ");) {
        const bool isDevice = line.starts_with("\t");
        uint16 id = 0;
        std::string name;
        // A line behind two tabs fails too: its blanks do not stand there.
        if (!ParseLine(line.substr(isDevice ? 1 : 0), id, name))
            continue;
        if (isDevice && vendor)
            vendor->devices.emplace(id, name);
        else if (!isDevice)
            (vendor = &vendors[id])->name = name;
    }
}

std::string PciNameList::Vendor(const uint16& vendorId) const
{
    const auto vendor = vendors.find(vendorId);
    return vendor == vendors.end() ? "" : vendor->second.name;
}

std::string PciNameList::Device(const uint16& vendorId, const uint16& deviceId) const
{
    const auto vendor = vendors.find(vendorId);
    if (vendor == vendors.end())
        return "";
    const auto device = vendor->second.devices.find(deviceId);
    return device == vendor->second.devices.end() ? "" : device->second;
}

std::vector<std::string> PciNameList::Vendors() const
{
    // Several ids belong to one name: a vendor that was bought keeps its old ids.
    std::set<std::string> names;
    for (const auto& [id, vendor] : vendors)
        names.insert(vendor.name);
    return { names.begin(), names.end() };
}

std::vector<std::string> PciNameList::Devices(const uint16& vendorId) const
{
    std::set<std::string> names;
    if (const auto vendor = vendors.find(vendorId); vendor != vendors.end()) {
        for (const auto& [id, name] : vendor->second.devices)
            names.insert(name);
    }
    return { names.begin(), names.end() };
}
