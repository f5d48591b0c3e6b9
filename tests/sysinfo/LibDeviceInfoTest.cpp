#include "sysinfo/LibDeviceInfo.h"

#include "tests/kits/kernel/PciTree.h"
#include "tests/support/Printed.h"
#include "tests/support/Test.h"

TEST(LibDeviceInfo, ListsClassesInTheTablesOrderWithNamesWhereThereAreAny)
{
    const ThisMachine tree;
    AddPciFunction(tree, "0000:00:07.0", PciConfig(0x8086, 0x7110, 0x060100)); // the first of two
    AddPciFunction(tree, "0000:00:01.0", PciConfig(0x1af4, 0x1000, 0x020000)); // unknown vendor
    AddPciFunction(tree, "0000:00:02.0", PciConfig(0x1097, 0x0001, 0x030000)); // unknown device
    AddPciFunction(tree, "0000:00:03.0", PciConfig(0x1014, 0x0046, 0x080000)); // without any name
    AddPciFunction(tree, "0000:00:04.0", PciConfig(0x0e11, 0x0001, 0x060200)); // has only a chip
    AddPciFunction(tree, "0000:00:05.0", PciConfig(0x8086, 0x1229, 0x0d0000)); // no class of ours
    std::string board = PciConfig(0x5333, 0x5631, 0xff0000); // out of order
    board.replace(44, 4, "\x2b\x10\x39\x05");
    AddPciFunction(tree, "0000:00:06.0", board);
    LibDeviceInfo info;
    FILE* file = fopen((tree.Path() + "/written").c_str(), "w");
    for (pciItem* item = info.First(); item; item = info.Next())
        item->Write(file);
    fclose(file);
    EXPECT_EQ(tree.Read("written"), ReadFile(TARVEX_TESTS "/sysinfo/devices.txt"));
    EXPECT_EQ(Printed(info), ReadFile(TARVEX_TESTS "/sysinfo/printed-devices.txt"));

    EXPECT_EQ(info.NumberPciDecices(6), 2);
    const pciDevice& last = *info.Get(4L)->devices.begin();
    EXPECT_EQ(last.boardVendorId << 16 | last.boardId, 0x102b0539);
    EXPECT_STREQ(last.slot, "00:06.0");
    EXPECT_EQ(info.Get(1L)->devices.begin()->subclass, 2);
    pciItem copy(*info.Get(1L));
    copy.ClassId(7);
    EXPECT_TRUE(copy.classId == 7 && copy.devices.Size() == 2 && copy.NumberDevicesUnknown() == 0);
    pciDevice half;
    half.VendorLong("Known by its long name alone");
    EXPECT_FALSE(half.IsVendorMatched());
    half.VendorLong("Unknown");
    half.VendorShort("Known by its short name alone");
    EXPECT_FALSE(half.IsVendorMatched());
    EXPECT_FALSE(info.AllDevicesKnown());
    EXPECT_EQ(info.Current()->classId, 3) << "an empty name is a name";
    LibString text = "as before";
    info.Insert(std::make_unique<pciItem>(13)); // without devices
    EXPECT_FALSE(info.FindDevice(13, text));
    EXPECT_STREQ(text, "as before");
    EXPECT_TRUE(info.FindDevice(6, text));
    EXPECT_STREQ(text, "Compaq, EISA Bridge");
}

TEST(LibDeviceInfo, HasNothingAndKnowsAllWhereThereAreNoBuses)
{
    const ThisMachine tree;
    LibDeviceInfo info;
    EXPECT_EQ(info.Size(), 0);
    EXPECT_TRUE(info.AllDevicesKnown());
    int index = 0, classId = -1;
    LibString name;
    std::string classes;
    while (info.NextClassId(index, classId, name))
        classes += std::to_string(classId) + " " + static_cast<const char*>(name) + ", ";
    EXPECT_EQ(classes,
        "8 Base Peripheral, 6 Bridge, 3 Display, 10 Docking Station, 0 Early, 9 Input, "
        "1 Mass Storage, 5 Memory, 4 Multimedia, 2 Network, 11 Processor, 12 Serial Bus, "
        "7 Simple Communications, 255 Undefined, ");
    for (const int bad : { -1, 14, INT32_MAX }) {
        index = bad;
        EXPECT_TRUE(!info.NextClassId(index, classId, name) && index == bad);
    }
    EXPECT_FALSE(pciDevice() == pciDevice() || pciDevice() > pciDevice());
    EXPECT_TRUE(pciItem(3) == pciItem(3) && pciItem(3) > pciItem(2) && !(pciItem(3) > pciItem(3)));
}
