#include "results/Results.h"

#include "sysinfo/LibSysInfo.h"
#include "sysinfo/TypedPciNames.h"
#include "tests/kits/kernel/PciTree.h"
#include "tests/support/Test.h"

TEST(Results, FillTheseDevicesNamesTheScreenAndTheFirstDeviceOfEachClass)
{
    const std::string folder = DataHome() / "tarvex";
    const ThisMachine tree;
    AddPciFunction(tree, "0000:00:01.0", PciConfig(0x10de, 0x0020, 0x030000));
    AddPciFunction(tree, "0000:00:02.0", PciConfig(0x102b, 0x0521, 0x030000));
    AddPciFunction(tree, "0000:00:03.0", PciConfig(0x1af4, 0x1000, 0x020000));
    AddPciFunction(tree, "0000:00:07.0", PciConfig(0x8086, 0x7110, 0x060100));
    const LibSysInfo machine;
    Results results(true);
    results.FillTheseDevices();
    char record[kRecordSize];
    EXPECT_TRUE(results.Write(record));
    LibString screen;
    screen.Formatted("\t-1:%s, %dx%d resolution\t", machine.ScreenDepthStr(), machine.screenWidth,
        machine.screenHeight);
    EXPECT_STREQ(strchr(record, '\t'),
        (std::string(screen.operator const char*())
            + "6:Intel Corporation, PIIX4 ISA Bridge\t3:Nvidia Corporation, Riva TNT\t"
              "2:Unknown, Unknown\t")
            .c_str());

    std::filesystem::create_directory(folder);
    WriteFile(folder + "/pci.ids", "1af4  Mine\n\t1000  Card\n");
    EXPECT_TRUE(TypedPciNames::SetForResults(true));
    Results named(true);
    named.FillTheseDevices();
    std::string last;
    for (const RelatedDevices& device : named.devices)
        last = device.description;
    EXPECT_EQ(last, "Mine, Card");
    EXPECT_TRUE(TypedPciNames::SetForResults(false));
}
