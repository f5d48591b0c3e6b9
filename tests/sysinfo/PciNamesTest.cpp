#include "sysinfo/PciNames.h"

#include "tests/support/Test.h"

TEST(PciNameList, ReadsTheNamesOfAListAndLeavesOutWhatIsDamagedWithAllBelow)
{
    using Names = std::vector<std::string>;
    const PciNameList list(
        "# a comment\n\n\tffff  A device of nobody\n"
        "8086  Intel Corporation  \r\n\t1229  Ethernet Pro 100\n\t\t8086 0001  A board\n"
        "\t122x  No number\n\t\t8086 0002  Below none\n\t7110\n\t12291  Too long\n"
        "# another\n\t0001  Ethernet Pro 100\n\t1229  Later\n\t\t8086 0002  Its board\n"
        "102b  Matrox\n808  Cut\n\t0001  Of the cut one\n8087 Intel\n12345  Too long\n"
        "1234  With\ta tab\n1235  \xff\n1236  "
        + std::string(201, 'x')
        + "\nC 02  Network controller\n\t00  Ethernet controller\n\t\t01  Not a board\n"
          "\t0200  Too long\n102B  Again\n\t0519  MGA");
    EXPECT_EQ(list.FirstDamaged(), 3u);
    EXPECT_EQ(list.Vendors(), (Names { "Intel Corporation", "Matrox" }));
    EXPECT_EQ(list.Vendor(0x8086), "Intel Corporation");
    EXPECT_EQ(list.Vendor(0x8087), "");
    EXPECT_EQ(list.Devices(0x8086), (Names { "Ethernet Pro 100" }));
    EXPECT_EQ(list.Devices(0x102b), (Names { "MGA" }));
    EXPECT_EQ(list.Device(0x8086, 0x1229), "Ethernet Pro 100");
    EXPECT_EQ(list.Device(0x8086, 0x7110), "");
    EXPECT_EQ(list.Subsystem(0x8086, 0x1229, 0x8086, 1), "A board");
    EXPECT_EQ(list.Subsystem(0x8086, 0x1229, 0x8086, 2), "Its board");
    EXPECT_EQ(list.Subsystem(0x8086, 0x1229, 0x8086, 3), "");
    EXPECT_EQ(list.Class(2, 0), "Network controller, Ethernet controller");
    EXPECT_EQ(list.Class(2, 1), "Network controller");
    EXPECT_EQ(list.Class(3, 0), "");
    EXPECT_EQ(PciNameList("").Vendors(), Names());
}
