#include "sysinfo/PciNames.h"

#include "tests/support/Test.h"

TEST(PciNameList, ReadsTheNamesOfAListAndLeavesOutWhatIsDamagedWithAllBelow)
{
    using Names = std::vector<std::string>;
    const PciNameList list(ReadFile(TARVEX_TESTS "/sysinfo/damaged.ids"));
    EXPECT_EQ(list.FirstDamaged(), 3u);
    EXPECT_EQ(list.Vendors(), (Names { "Intel Corporation", "Matrox", std::string(200, 'y') }));
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
    EXPECT_TRUE(PciNameList("").Vendors().empty() && list.Devices(0x8087).empty());
    const PciNameList systems; // as far as there is one
    EXPECT_EQ(systems.Vendors().empty(), systems.Vendor(0x8086).empty());
}
