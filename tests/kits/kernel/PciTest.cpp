#include "PciTree.h"

#include <PCI.h>

#include <numeric>
#include <random>

namespace {
const std::string kDevices = "sys/bus/pci/devices/";

std::string Format(const char* format, auto... values)
{
    char text[64];
    snprintf(text, sizeof text, format, values...);
    return text;
}

std::vector<pci_info> AllFunctions()
{
    std::vector<pci_info> infos;
    pci_info info;
    while (get_nth_pci_info(static_cast<long>(infos.size()), &info) == B_OK)
        infos.push_back(info);
    return infos;
}

std::string PlaceOf(const pci_info& info)
{
    return Format("%02x:%02x.%x", info.bus, info.device, info.function);
}
} // namespace

TEST(Pci, FunctionsAreCountedByTheirPlaceWithoutGaps)
{
    std::vector<std::string> places; // in order; the domain of five digits comes last
    for (const char* domain : { "0000", "0001", "10000" })
        for (int bus : { 0, 9, 16, 255 })
            for (int device : { 0, 10, 31 })
                for (int function = 0; function < 6; function++)
                    places.push_back(Format("%s:%02x:%02x.%x", domain, bus, device, function));
    ASSERT_GT(places.size(), 200u);
    std::vector<size_t> order(places.size());
    std::iota(order.begin(), order.end(), 0);
    std::shuffle(order.begin(), order.end(), std::minstd_rand(1));

    const ThisMachine tree;
    for (const size_t i : order)
        AddPciFunction(tree, places[i], PciConfig(0x8086, static_cast<int>(i), 0x020000));
    // What cannot be read, in front of all, amid them and behind.
    AddPciFunction(tree, "0000:00:00.7", "\x86"); // cut in its first number
    tree.Write(kDevices + "0000:09:0b.0/power", "");
    AddPciFunction(tree, "0001:00:0b.0", PciConfig(0xffff, 0xffff, 0xffffff)); // unplugged
    std::filesystem::create_directories(tree.Path() + "/" + kDevices + "20000:00:00.0/config");
    for (const char* name : { "pci", "0000:00:20.0", "0000:00:01.8", "0000:100:01.0", "0:0:0.0x" })
        AddPciFunction(tree, name, PciConfig(0x8086, 0x1229, 0x020000));
    const std::vector<pci_info> infos = AllFunctions();
    ASSERT_EQ(infos.size(), places.size());
    for (size_t i = 0; i < infos.size(); i++) {
        EXPECT_EQ(infos[i].device_id, i);
        EXPECT_TRUE(places[i].ends_with(":" + PlaceOf(infos[i]))) << places[i];
    }
    pci_info info {};
    for (const long index : { -1L, static_cast<long>(infos.size()), 0x100000000L })
        EXPECT_EQ(get_nth_pci_info(index, &info), B_ERROR) << index;
    EXPECT_EQ(get_nth_pci_info(0, nullptr), B_BAD_VALUE);
}
