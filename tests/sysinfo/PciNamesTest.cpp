#include "sysinfo/PciNames.h"

#include "tests/kits/kernel/MachineTree.h"
#include "tests/support/Test.h"

TEST(PciNameList, ReadsVendorsAndTheirDevicesAndLeavesOutWhatIsDamaged)
{
    using Names = std::vector<std::string>;
    const MachineTree tree;
    tree.Write("ids",
        "# a comment\n\n\tffff  A device of nobody\n"
        "8086  Intel Corporation  \r\n\t1229  Ethernet Pro 100\n\t\t8086 0001  A board\n"
        "\t122x  No number\n\t7110\n\t12291  Too long\n\t0001  Ethernet Pro 100\n"
        "102b  Matrox\n808  Cut\n8087 Intel\n12345  Too long\n"
        "C 02  Network controller\n\t00  Ethernet controller\n9999  Behind the end\n");
    const PciNameList list((tree.Path() + "/ids").c_str());
    EXPECT_EQ(list.Vendors(), (Names { "Intel Corporation", "Matrox" }));
    EXPECT_EQ(list.Vendor(0x8086), "Intel Corporation");
    EXPECT_EQ(list.Vendor(0x8087), "");
    EXPECT_EQ(list.Devices(0x8086), (Names { "Ethernet Pro 100" }));
    EXPECT_EQ(list.Device(0x8086, 0x1229), "Ethernet Pro 100");
    EXPECT_EQ(list.Device(0x8086, 0x7110), "");
    EXPECT_EQ(PciNameList((tree.Path() + "/none").c_str()).Vendors(), Names());
}
