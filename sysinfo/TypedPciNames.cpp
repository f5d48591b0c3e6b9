#include "sysinfo/TypedPciNames.h"

#include "sysinfo/LibDeviceInfo.h"

#include <Autolock.h>
#include <Locker.h>
#include <UserData.h>

#include <algorithm>
#include <cstdio>

namespace {

constexpr char kFile[] = "pci.ids";
constexpr size_t kMostBytes = 4 << 20; // the system's list has a third of that
constexpr char kForResults[] = "names-in-results"; // has a byte where they are wanted
constexpr char kNoName[] = "Unknown"; // as devices are called that have none

void Complain(const std::string& problem)
{
    static BLocker& sLock = *new BLocker; // never destroyed: threads may outlive static objects
    static std::string& sLast = *new std::string;
    const BAutolock lock(sLock);
    // Every run reads the names, and every window that shows devices.
    if (problem != sLast)
        fprintf(stderr, "Error reading <%s>: %s\n", PathOfUserData(kFile).c_str(), problem.c_str());
    sLast = problem;
}

std::string LineFor(size_t tabs, uint16 id, const std::string& name)
{
    char number[8];
    snprintf(number, sizeof number, "%4.4x  ", id);
    return std::string(tabs, '\t') + number + name;
}

// The name as a line of the file can have it; "" for what is none there, or says that there is
// none.
std::string OrNothing(const std::string& name)
{
    const size_t start = std::min(name.find_first_not_of(' '), name.size());
    const std::string line = LineFor(0, 0, name.substr(start));
    const auto parsed = ParsePciName(line, false);
    return parsed && parsed->name != kNoName ? std::string(parsed->name) : "";
}

// Neither a name nor damaged.
bool IsComment(const std::string& line)
{
    return line.find_first_not_of(" \t\r") == line.npos || line[0] == '#';
}

const char* TableName(uint16 vendorId)
{
    const PciVendorRow* row = g_vendor_table;
    while (row->vendorId < UINT16_MAX && row->vendorId != vendorId)
        row++;
    return row->vendorId == vendorId ? row->longName : kNoName;
}

} // namespace

TypedPciNames::TypedPciNames() : names("")
{
    std::string why;
    const std::string text = ReadUserData(kFile, kMostBytes, &why).value_or("");
    isReadable = why.empty();
    names = PciNameList(text);
    if (names.FirstDamaged() > 0)
        why = "line " + std::to_string(names.FirstDamaged()) + " has no name";
    if (!why.empty())
        Complain(why);
    for (size_t start = 0; start < text.size();) {
        const size_t end = std::min(text.find('\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
}

std::string TypedPciNames::Vendor(const uint16& vendorId) const
{
    return OrNothing(names.Vendor(vendorId));
}

std::string TypedPciNames::Device(const uint16& vendorId, const uint16& deviceId) const
{
    return OrNothing(names.Device(vendorId, deviceId));
}

std::vector<std::string> TypedPciNames::GiveTo(LibDeviceInfo& info) const
{
    std::vector<std::string> named;
    for (pciItem& item : info) {
        for (pciDevice& device : item.devices) {
            const std::string vendor = device.IsVendorMatched() ? "" : Vendor(device.vendorId);
            const std::string name =
                device.IsDeviceMatched() ? "" : Device(device.vendorId, device.deviceId);
            if (!vendor.empty())
                device.VendorLong(vendor.c_str());
            if (!name.empty())
                device.Description(name.c_str());
            if (vendor.empty() && name.empty())
                continue;
            const char* parts[] = { item.type, device.slot, device.vendorLong, device.description };
            named.push_back(
                std::string(parts[0]) + " " + parts[1] + ": " + parts[2] + ", " + parts[3]);
        }
    }
    return named;
}

// The line with that id behind so many tabs, from first to where other things stand; the number of
// lines if there is none.
size_t TypedPciNames::Find(size_t first, size_t tabs, uint16 id) const
{
    for (size_t i = first; i < lines.size(); i++) {
        const std::string& line = lines[i];
        const auto parsed = ParsePciName(line, false);
        if (IsComment(line) || (parsed && parsed->tabs > tabs))
            continue;
        if (parsed && !parsed->isClass && parsed->tabs == tabs && parsed->id == id)
            return i;
        // Also a damaged vendor has devices of its own.
        if (tabs > 0 && line[0] != '\t')
            break;
    }
    return lines.size();
}

// The line of the vendor, which need not have a name of its own for its devices to have one.
size_t TypedPciNames::MakeVendor(uint16 vendorId)
{
    const size_t found = Find(0, 0, vendorId);
    if (found < lines.size())
        return found;
    const auto classes = std::find_if(
        lines.begin(), lines.end(), [](const std::string& line) { return line.starts_with("C "); });
    const auto made = lines.insert(classes, LineFor(0, vendorId, TableName(vendorId)));
    return static_cast<size_t>(made - lines.begin());
}

// With the names of the boards below a device.
void TypedPciNames::Erase(size_t line)
{
    const auto isBoard = [](const std::string& each) { return each.starts_with("\t\t"); };
    lines.erase(At(line), std::find_if_not(At(line + 1), lines.end(), isBoard));
}

void TypedPciNames::SetVendor(const uint16& vendorId, const std::string& name)
{
    const std::string wanted = OrNothing(name);
    if (wanted == Vendor(vendorId))
        return;
    isChanged = true;
    if (!wanted.empty()) {
        lines[MakeVendor(vendorId)] = LineFor(0, vendorId, wanted);
        return;
    }
    for (size_t line = 0; (line = Find(line, 0, vendorId)) < lines.size();) {
        const auto below = std::find_if_not(At(line + 1), lines.end(), IsComment);
        if (below != lines.end() && below->starts_with('\t'))
            lines[line++] = LineFor(0, vendorId, kNoName); // for its devices
        else
            Erase(line);
    }
}

void TypedPciNames::SetDevice(
    const uint16& vendorId, const uint16& deviceId, const std::string& name)
{
    const std::string wanted = OrNothing(name);
    if (wanted == Device(vendorId, deviceId))
        return;
    isChanged = true;
    // A list may have a vendor, and a device, more than once.
    for (size_t vendor = 0; (vendor = Find(vendor, 0, vendorId)) < lines.size(); vendor++) {
        for (size_t line; (line = Find(vendor + 1, 1, deviceId)) < lines.size();) {
            if (!wanted.empty()) {
                lines[line] = LineFor(1, deviceId, wanted);
                return;
            }
            Erase(line);
        }
    }
    if (!wanted.empty())
        lines.insert(At(MakeVendor(vendorId) + 1), LineFor(1, deviceId, wanted));
}

bool TypedPciNames::Save()
{
    if (!isChanged)
        return true;
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    // What is too long would not be read again.
    if (isReadable && text.size() <= kMostBytes && WriteUserData(kFile, text)) {
        names = PciNameList(text);
        isChanged = false;
        return true;
    }
    fprintf(stderr, "The names typed could not be kept in <%s>\n", PathOfUserData(kFile).c_str());
    return false;
}

bool TypedPciNames::AreForResults()
{
    return !ReadUserData(kForResults, 1).value_or("").empty();
}

bool TypedPciNames::SetForResults(bool wanted)
{
    if (wanted == AreForResults() || WriteUserData(kForResults, wanted ? "1" : ""))
        return true;
    fprintf(stderr, "Error writing <%s>\n", PathOfUserData(kForResults).c_str());
    return false;
}
