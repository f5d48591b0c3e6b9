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

void Put(std::string& bytes, size_t at, std::initializer_list<int> values)
{
    for (const int value : values)
        bytes[at++] = static_cast<char>(value);
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

TEST(Pci, AHeaderIsTakenApartByItsType)
{
    const ThisMachine tree;
    std::string config = PciConfig(0x10de, 0x0020, 0x030002);
    Put(config, 8, { 4 });
    Put(config, 12, { 8, 64, 0x80, 0x81 });
    Put(config, 16, { 0x09, 0xd0, 0, 0 }); // an I/O address
    Put(config, 20, { 0x0c, 0, 0, 0xe0, 0x12 }); // one of memory in 64 bits
    Put(config, 40, { 1, 2, 3, 4, 0x2b, 0x10, 0xff, 0x06, 1, 0, 0xff, 0xf7 });
    Put(config, 60, { 11, 1, 5, 6 });
    AddPciFunction(tree, "0000:01:00.0", config);
    tree.Write(kDevices + "0000:01:00.0/resource",
        "0x000000000000d008 0x000000000000d107 0x0000000000040101\n"
        "0x00000012e0000000 0x00000015dfffffff 0x000000000014220c\n"
        "0x0000000000000000 0x0000000000000000 0x0000000000000000\n\nnonsense\n\n"
        "0x00000000f7ff0000 0x00000000f7ffffff 0x0000000000046200\n");
    config = PciConfig(0x8086, 0x7191, 0x060400);
    Put(config, 14, { 1 });
    for (int i = 24; i < 64; i++)
        config[static_cast<size_t>(i)] = static_cast<char>(i);
    AddPciFunction(tree, "0000:01:01.0", config);
    const std::vector<pci_info> infos = AllFunctions();
    ASSERT_EQ(infos.size(), 2u);
    using Numbers = std::vector<uint32>;
    const pci_info& info = infos[0];
    EXPECT_EQ((Numbers { info.revision, info.class_base, info.class_sub, info.class_api,
                  info.line_size, info.latency, info.header_type, info.bist }),
        (Numbers { 4, 3, 0, 2, 8, 64, 0x80, 0x81 }));
    const auto& device = info.u.h0;
    const Numbers registers[] = { { 0xd008, 0xd008, 0x100, 1 }, { 0xe0000000, 0xe0000000, 0, 12 },
        { 0x12, 0x12, 3, 0 }, { 0, 0, 0, 0 } }; // 12 GB from 0x12e0000000 on, and none
    for (size_t i = 0; i < 4; i++) {
        EXPECT_EQ((Numbers { device.base_registers[i], device.base_registers_pci[i],
                      device.base_register_sizes[i], device.base_register_flags[i] }),
            registers[i])
            << i;
    }
    EXPECT_EQ((Numbers { device.cardbus_cis, device.subsystem_vendor_id, device.subsystem_id,
                  device.rom_base, device.rom_base_pci, device.rom_size, device.interrupt_line,
                  device.interrupt_pin, device.min_grant, device.max_latency }),
        (Numbers { 0x04030201, 0x102b, 0x06ff, 0xf7ff0000, 0xf7ff0000, 0x10000, 11, 1, 5, 6 }));
    const auto& bridge = infos[1].u.h1; // whose bytes are their places
    EXPECT_EQ((Numbers { bridge.primary_bus, bridge.secondary_bus, bridge.subordinate_bus,
                  bridge.secondary_latency, bridge.io_base, bridge.io_limit,
                  bridge.secondary_status, bridge.memory_base, bridge.memory_limit,
                  bridge.prefetchable_memory_base, bridge.prefetchable_memory_limit,
                  bridge.prefetchable_memory_base_upper32, bridge.prefetchable_memory_limit_upper32,
                  bridge.io_base_upper16, bridge.io_limit_upper16, bridge.rom_base_pci,
                  bridge.interrupt_line, bridge.interrupt_pin, bridge.bridge_control }),
        (Numbers { 24, 25, 26, 27, 28, 29, 0x1f1e, 0x2120, 0x2322, 0x2524, 0x2726, 0x2b2a2928,
            0x2f2e2d2c, 0x3130, 0x3332, 0x3b3a3938, 60, 61, 0x3f3e }));
}

TEST(Pci, WhatTheSystemSaysPrecedesTheConfiguration)
{
    const ThisMachine tree;
    const std::string folder = kDevices + "0000:02:10.0/";
    tree.Write(folder + "config", PciConfig(0xffff, 0xffff, 0x020000)); // a virtual function
    tree.Write(folder + "vendor", "0x8086\n");
    tree.Write(folder + "device", "0x10ca\n");
    tree.Write(folder + "class", "0x028000\n");
    tree.Write(folder + "revision", "0x07\n");
    tree.Write(kDevices + "0000:02:10.1/vendor", "0x8086\n");
    tree.Write(kDevices + "0000:02:10.1/device", "0x10cb\n"); // of no class: left out
    const std::vector<pci_info> infos = AllFunctions();
    ASSERT_EQ(infos.size(), 1u);
    const pci_info& info = infos[0];
    EXPECT_EQ(info.vendor_id, 0x8086);
    EXPECT_EQ(info.device_id << 16 | info.class_sub << 8 | info.revision, 0x10ca8007);
}
