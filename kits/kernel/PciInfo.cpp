#include "KillGuard.h"
#include "LeafLock.h"
#include "PCI.h"
#include "Processors.h"
#include "SystemTree.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace {
using kernel::ReadText;

constexpr size_t kConfigSize = 64; // what everybody may read
constexpr size_t kRomIndex = 6; // of the system's list of resources, after the base registers
constexpr uint32 kRomEnabled = 1;
constexpr uint32 kNoVendor = 0xffff; // what a bus without a device answers
constexpr uint32 kNotTold = UINT32_MAX;

// The configuration space, whose numbers have their lowest byte first. Missing bytes are 0.
class Config {
public:
    explicit Config(const std::string& bytes) : fSize(std::min(bytes.size(), kConfigSize))
    {
        std::copy_n(bytes.begin(), fSize, fBytes.begin());
    }

    bool Has(size_t bytes) const { return fSize >= bytes; }

    uint8 Byte(size_t at) const { return static_cast<uint8>(fBytes[at]); }
    uint16 Word(size_t at) const { return static_cast<uint16>(Byte(at) | Byte(at + 1) << 8); }
    uint32 Long(size_t at) const { return Word(at) | static_cast<uint32>(Word(at + 2)) << 16; }

private:
    const size_t fSize;
    std::array<char, kConfigSize> fBytes {};
};

// The addresses that the system has given to a register's resource.
struct Resource {
    uint64 start = 0;
    uint64 size = 0;
};

using Resources = std::array<Resource, kRomIndex + 1>;

Resources ReadResources(const std::string& folder)
{
    Resources resources;
    std::istringstream lines(ReadText(folder + "resource"));
    std::string line;
    for (size_t i = 0; i < resources.size() && std::getline(lines, line); i++) {
        uint64 start = 0, end = 0;
        std::istringstream fields(line);
        if (fields >> std::hex >> start >> end && end != 0 && end >= start)
            resources[i] = { start, end - start + 1 };
    }
    return resources;
}

// The text file of a number in hexadecimal; otherwise where there is none.
uint32 HexFile(const std::string& path, uint32 otherwise)
{
    const std::string text = ReadText(path);
    uint32 number = 0;
    return sscanf(text.c_str(), " 0x%x", &number) == 1 ? number : otherwise;
}

bool IsWide(uint32 base)
{
    return (base & 7) == 4; // a memory address of 64 bits, whose upper half is the next register
}

// Fills the base registers of either header, which stand at byte 16.
template <class Header>
void FillRegisters(Header& header, const Config& config, const Resources& resources)
{
    bool isUpperHalf = false;
    for (size_t i = 0; i < std::size(header.base_registers); i++) {
        const uint32 base = config.Long(16 + 4 * i);
        const uint32 flags = isUpperHalf ? 0 : base & (base & 1 ? 3 : 15);
        const Resource& resource = resources[isUpperHalf ? i - 1 : i];
        const int shift = isUpperHalf ? 32 : 0;
        header.base_registers[i] = static_cast<uint32>(resource.start >> shift);
        header.base_registers_pci[i] = base & ~flags;
        header.base_register_sizes[i] = static_cast<uint32>(resource.size >> shift);
        header.base_register_flags[i] = static_cast<uint8>(flags);
        isUpperHalf = !isUpperHalf && IsWide(base);
    }
}

template <class Header>
void FillRom(Header& header, uint32 base, const Resources& resources)
{
    header.rom_base = static_cast<uint32>(resources[kRomIndex].start);
    header.rom_base_pci = base & ~kRomEnabled;
}

void FillDevice(pci_info& info, const Config& config, const Resources& resources)
{
    auto& header = info.u.h0;
    FillRegisters(header, config, resources);
    FillRom(header, config.Long(48), resources);
    header.rom_size = static_cast<uint32>(resources[kRomIndex].size);
    header.cardbus_cis = config.Long(40);
    header.subsystem_vendor_id = config.Word(44);
    header.subsystem_id = config.Word(46);
    header.interrupt_line = config.Byte(60);
    header.interrupt_pin = config.Byte(61);
    header.min_grant = config.Byte(62);
    header.max_latency = config.Byte(63);
}

void FillBridge(pci_info& info, const Config& config, const Resources& resources)
{
    auto& header = info.u.h1;
    FillRegisters(header, config, resources);
    FillRom(header, config.Long(56), resources);
    header.primary_bus = config.Byte(24);
    header.secondary_bus = config.Byte(25);
    header.subordinate_bus = config.Byte(26);
    header.secondary_latency = config.Byte(27);
    header.io_base = config.Byte(28);
    header.io_limit = config.Byte(29);
    header.secondary_status = config.Word(30);
    header.memory_base = config.Word(32);
    header.memory_limit = config.Word(34);
    header.prefetchable_memory_base = config.Word(36);
    header.prefetchable_memory_limit = config.Word(38);
    header.prefetchable_memory_base_upper32 = config.Long(40);
    header.prefetchable_memory_limit_upper32 = config.Long(44);
    header.io_base_upper16 = config.Word(48);
    header.io_limit_upper16 = config.Word(50);
    header.interrupt_line = config.Byte(60);
    header.interrupt_pin = config.Byte(61);
    header.bridge_control = config.Word(62);
}

void FillHeader(pci_info& info, const Config& config, const Resources& resources)
{
    info.line_size = config.Byte(12);
    info.latency = config.Byte(13);
    info.header_type = config.Byte(14);
    info.bist = config.Byte(15);
    const int header = info.header_type & PCI_header_type_mask;
    if (header == PCI_header_type_generic)
        FillDevice(info, config, resources);
    else if (header == PCI_header_type_PCI_to_PCI_bridge)
        FillBridge(info, config, resources);
}

// A function's place, in the order in which functions are counted.
struct PciPlace {
    uint32 domain = 0;
    uint8 bus = 0;
    uint8 device = 0;
    uint8 function = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): it takes the default for a zero
    auto operator<=>(const PciPlace&) const = default;
};

std::string DevicesFolder(const std::string& root)
{
    return root + "/sys/bus/pci/devices/";
}

std::string FolderOf(const std::string& root, const PciPlace& place)
{
    char name[40];
    snprintf(name, sizeof name, "%04x:%02x:%02x.%x/", place.domain, place.bus, place.device,
        place.function);
    return DevicesFolder(root) + name;
}

// Takes one number and what ends it off the text; false if they are not there.
template <class Number>
bool TakeHex(std::string_view& text, char end, uint32 most, Number& number)
{
    uint32 value = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    const bool isAtEnd = rest == text.data() + text.size();
    if (error != std::errc() || value > most || (end == 0 ? !isAtEnd : isAtEnd || *rest != end))
        return false;
    text.remove_prefix(static_cast<size_t>(rest - text.data()) + (end == 0 ? 0 : 1));
    number = static_cast<Number>(value);
    return true;
}

// The place in a name like "0000:00:1f.2"; false if the name is another.
bool ParsePciPlace(const std::string& name, PciPlace& place)
{
    std::string_view text = name;
    return TakeHex(text, ':', UINT32_MAX, place.domain) && TakeHex(text, ':', 255, place.bus)
        && TakeHex(text, '.', 31, place.device) && TakeHex(text, 0, 7, place.function);
}

// The functions below root/sys (root "": the running system), in order.
std::vector<PciPlace> ListPciPlaces(const std::string& root)
{
    std::vector<PciPlace> places;
    std::error_code error;
    for (std::filesystem::directory_iterator entry(DevicesFolder(root), error), end; entry != end;
         entry.increment(error)) {
        PciPlace place;
        if (ParsePciPlace(entry->path().filename(), place))
            places.push_back(place);
    }
    std::sort(places.begin(), places.end());
    return places;
}

// False if there is none that can be read. The ids and the class come from files of their own where
// there are such: a virtual function answers 0xffff in its configuration, and the system corrects
// classes that a maker got wrong.
bool ReadPciInfo(const std::string& root, const PciPlace& place, pci_info& info)
{
    const std::string folder = FolderOf(root, place);
    const Config config(ReadText(folder + "config"));
    const bool hasIds = config.Has(4);
    const uint32 vendor = HexFile(folder + "vendor", hasIds ? config.Word(0) : kNotTold);
    const uint32 device = HexFile(folder + "device", hasIds ? config.Word(2) : kNotTold);
    const uint32 kind = HexFile(folder + "class", config.Has(12) ? config.Long(8) >> 8 : kNotTold);
    if (vendor >= kNoVendor || device > UINT16_MAX || kind > 0xffffff)
        return false;
    info = {};
    info.vendor_id = static_cast<uint16>(vendor);
    info.device_id = static_cast<uint16>(device);
    info.bus = place.bus;
    info.device = place.device;
    info.function = place.function;
    info.revision = static_cast<uint8>(HexFile(folder + "revision", config.Byte(8)));
    info.class_api = static_cast<uint8>(kind);
    info.class_sub = static_cast<uint8>(kind >> 8);
    info.class_base = static_cast<uint8>(kind >> 16);
    FillHeader(info, config, ReadResources(folder));
    return true;
}

// The functions as last read. A walk asks for each of them once, and every reading of a
// configuration wakes a device that sleeps: so they are read again only when others are there.
struct Snapshot {
    Mutex lock;
    bool isRead GUARDED_BY(lock) = false;
    std::string root GUARDED_BY(lock);
    std::vector<PciPlace> places GUARDED_BY(lock);
    std::vector<pci_info> infos GUARDED_BY(lock);
};

Snapshot& TheSnapshot()
{
    static Snapshot* const sSnapshot = new Snapshot; // other threads may outlive static objects
    return *sSnapshot;
}

void Refresh(Snapshot& snapshot, const std::string& root) REQUIRES(snapshot.lock)
{
    auto places = ListPciPlaces(root);
    if (snapshot.isRead && root == snapshot.root && places == snapshot.places)
        return;
    snapshot.infos.clear();
    for (const PciPlace& place : places) {
        pci_info info;
        if (ReadPciInfo(root, place, info))
            snapshot.infos.push_back(info);
    }
    snapshot.root = root;
    snapshot.places = std::move(places);
    snapshot.isRead = true;
}
} // namespace

status_t get_nth_pci_info(long index, pci_info* info)
{
    CheckKilled();
    if (!info)
        return B_BAD_VALUE;
    const std::string root = kernel::Processors::Get()->Root();
    Snapshot& snapshot = TheSnapshot();
    const LeafLock lock(snapshot.lock);
    if (index == 0 || !snapshot.isRead || root != snapshot.root)
        Refresh(snapshot, root);
    const auto place = static_cast<size_t>(index); // a negative one is behind all
    if (place >= snapshot.infos.size())
        return B_ERROR;
    *info = snapshot.infos[place];
    return B_OK;
}
