#include "results/Results.h"

#include <gtest/gtest.h>

#include "sysinfo/LibSysInfo.h"
#include "tests/kits/kernel/PciTree.h"

TEST(Results, FillTheseDevicesNamesTheScreenAndTheFirstDeviceOfEachClass)
{
    const MachineTree tree;
    AddPciFunction(tree, "0000:00:01.0", PciConfig(0x10de, 0x0020, 0x030000));
    AddPciFunction(tree, "0000:00:02.0", PciConfig(0x102b, 0x0521, 0x030000));
    AddPciFunction(tree, "0000:00:03.0", PciConfig(0x1af4, 0x1000, 0x020000));
    AddPciFunction(tree, "0000:00:07.0", PciConfig(0x8086, 0x7110, 0x060100));
    const RootGuard root(tree.Path());
    const LibSysInfo machine;
    Results results(true);
    EXPECT_EQ(results.devices.Size(), 0);
    results.FillTheseDevices();

    std::string lines;
    const LinkList<RelatedDevices>& devices = results.devices;
    for (long i = 0; i < devices.Size(); i++) {
        const RelatedDevices* device = results.devices.Get(i);
        const char* text = device->description;
        lines += std::to_string(device->type) + ":" + text + "\n";
    }
    EXPECT_EQ(lines,
        std::string("-1:") + machine.ScreenDepthStr() + ", " + std::to_string(machine.screenWidth)
            + "x" + std::to_string(machine.screenHeight)
            + " resolution\n"
              "6:Intel Corporation, PIIX4 ISA Bridge\n"
              "3:Nvidia Corporation, Riva TNT\n"
              "2:Unknown, Unknown\n");
}
