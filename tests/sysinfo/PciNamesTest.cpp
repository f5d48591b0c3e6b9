#include "sysinfo/PciNames.h"

#include "tests/support/Test.h"

TEST(PciNameList, ReadsTheNamesOfAListAndLeavesOutWhatIsDamagedWithAllBelow)
{
    using Names = std::vector<std::string>;
    const PciNameList list(ReadFile(TARVEX_TESTS "/sysinfo/damaged.ids"));
    EXPECT_EQ(list.FirstDamaged(), 3u);
    EXPECT_EQ(list.Vendors(), (Names { "Intel Corporation", "Matrox", std::string(200, 'y') }));
    EXPECT_EQ(list.Devices(0x8086), (Names { "Ethernet Pro 100" }));
    EXPECT_EQ(list.Devices(0x102b), (Names { "MGA" }));
    EXPECT_EQ(
        (Names { list.Vendor(0x8086), list.Vendor(0x8087), list.Device(0x8086, 0x1229),
            list.Device(0x8086, 0x7110), list.Subsystem(0x8086, 0x1229, 0x8086, 1),
            list.Subsystem(0x8086, 0x1229, 0x8086, 2), list.Subsystem(0x8086, 0x1229, 0x8086, 3),
            list.Class(2, 0), list.Class(2, 1), list.Class(3, 0) }),
        (Names { "Intel Corporation", "", "Ethernet Pro 100", "", "A board", "Its board", "",
            "Network controller, Ethernet controller", "Network controller", "" }));
    EXPECT_TRUE(PciNameList("").Vendors().empty() && list.Devices(0x8087).empty());
    const PciNameList systems; // as far as there is one
    const bool isThere = std::filesystem::exists("/usr/share/misc/pci.ids")
        || std::filesystem::exists("/usr/share/hwdata/pci.ids");
    EXPECT_EQ(systems.Vendor(0x8086), isThere ? "Intel Corporation" : "");
}
