// The bytes are a list of the names of PCI devices, as the user may have edited it.
#include "sysinfo/TypedPciNames.h"
#include "tests/fuzz/MemoryFolder.h"

namespace {

constexpr uint16 kVendors[] = { 0x0000, 0x1002, 0x1af4, 0x8086 };
constexpr uint16 kDevices[] = { 0x0000, 0x0001, 0x0abc, 0x1041 };

// Where the user's data lies from the start of the program on.
const struct Home : MemoryFolder {
    Home()
    {
        setenv("XDG_DATA_HOME", Path().c_str(), 1);
        Write("tarvex/pci.ids", "");
        std::filesystem::permissions(Path() + "/tarvex", std::filesystem::perms { 0700 });
    }
} gHome;

std::string Names(const TypedPciNames& names, uint16 butVendor, uint16 butDevice)
{
    std::string all;
    for (const uint16 vendor : kVendors) {
        all += vendor == butVendor ? "" : names.Vendor(vendor) + "\n";
        for (const uint16 device : kDevices) {
            if (vendor != butVendor || device != butDevice)
                all += names.Device(vendor, device) + "\n";
        }
    }
    return all;
}

// Gives names and takes them away again, which leaves all others.
void CheckChange(uint16 vendor, uint16 device)
{
    TypedPciNames names;
    const std::string others = Names(names, vendor, device);
    for (const char* name : { "A name", "" }) {
        names.SetVendor(vendor, name);
        names.SetDevice(vendor, device, name);
        Require(names.Save(), "the names are kept");
        names = TypedPciNames();
        Require(names.Vendor(vendor) == name || *name == '\0', "a vendor has the name typed");
        Require(names.Device(vendor, device) == name, "a device has the name typed, or none");
        Require(Names(names, vendor, device) == others, "all others have their names");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static FILE* const sQuiet = freopen("/dev/null", "w", stderr);
    const std::string text(reinterpret_cast<const char*>(data), size);
    const PciNameList list { std::string_view(text) };
    for (const std::string& name : list.Vendors())
        Require(!name.empty() && name.size() <= 200, "a name is short");
    static_cast<void>(list.Subsystem(0x1af4, 0x1041, 0x1af4, 1) + list.Class(2, 0));
    gHome.Write("tarvex/pci.ids", text);
    if (sQuiet)
        CheckChange(0x1af4, 0x1041);
    return 0;
}
