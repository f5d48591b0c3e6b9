#include "results/Results.h"

#include "sysinfo/LibSysInfo.h"
#include "sysinfo/TypedPciNames.h"
#include "tests/kits/kernel/PciTree.h"
#include "tests/support/Test.h"

namespace {

bool Shows(const Results& results, const std::array<uint8, 256>& picture)
{
    return results.icon->BitsLength() == 256
        && memcmp(results.icon->Bits(), picture.data(), picture.size()) == 0;
}

} // namespace

TEST(Results, AssignmentIsDeepAndKeepsWhatBelongsToTheTarget)
{
    Results from(true);
    from.description = "A (4-x)";
    from.frame.Set(0, 0, 9, 9);
    from.Contains(BPoint(1, 1));
    from.NewTest("Memory", 10)->Time(0.5f);
    auto device = std::make_unique<RelatedDevices>();
    device->Description(2, "Network");
    ASSERT_TRUE(from.devices.Insert(device.release()));

    Results to(false);
    to.NewTest("Old", 1);
    to = from;
    from.NewTest("Memory", 10)->Description("Changed");
    from.devices.First()->Description(3, "Changed");
    EXPECT_TRUE(to == from);
    EXPECT_TRUE(Shows(to, ProcessorOpen));
    ASSERT_EQ(to.Size(), 1);
    EXPECT_STREQ(to.First()->description, "Memory");
    EXPECT_EQ(to.First()->times[0], 0.5f);
    EXPECT_STREQ(to.devices.First()->description, "Network");
    EXPECT_FALSE(to.current);
}

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
