#include "sysinfo/PciNames.h"

#include "tests/kits/kernel/MachineTree.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>

namespace {

template <class Row>
std::vector<Row> RowsOf(const Row* table)
{
    std::vector<Row> rows;
    for (; table->vendorId < 0xFFFF; table++)
        rows.push_back(*table);
    return rows;
}

} // namespace

TEST(PciTables, VendorsAreOrderedAndTwoAreDoubled)
{
    const auto rows = RowsOf(g_vendor_table);
    int doubled = 0;
    std::string names = rows[0].longName + std::string("\n");
    for (size_t i = 1; i < rows.size(); i++) {
        EXPECT_LE(rows[i - 1].vendorId, rows[i].vendorId);
        EXPECT_TRUE(*rows[i].shortName && *rows[i].longName) << rows[i].vendorId;
        doubled += rows[i - 1].vendorId == rows[i].vendorId;
        names += rows[i].longName + std::string("\n");
    }
    EXPECT_EQ(doubled, 2);
    EXPECT_STREQ(g_vendor_table[rows.size()].longName, "ILLEGITIMATE VENDOR ID");
    EXPECT_TRUE(names.starts_with("Lockheed Martin Corp\n"));
    EXPECT_NE(names.find("\nAppian Technology\nAppian Graphics\n"), names.npos);
    EXPECT_NE(names.find("\nMicro Computer Systems, Inc.\nMicrocomputer Sysytems\n"), names.npos);
}

TEST(PciTables, DevicesAreGroupedByVendorAndThreeStandOutOfOrder)
{
    std::set<uint32> vendors;
    for (const PciVendorRow& vendor : RowsOf(g_vendor_table))
        vendors.insert(vendor.vendorId);
    int outOfOrder = 0;
    uint32 before = 0;
    for (const PciDeviceRow& row : RowsOf(g_device_table)) {
        const uint32 id = static_cast<uint32>(row.vendorId) << 16 | row.deviceId;
        EXPECT_TRUE(vendors.contains(row.vendorId)) << row.vendorId;
        EXPECT_LE(before >> 16, row.vendorId);
        outOfOrder += id < before;
        before = id;
    }
    EXPECT_EQ(outOfOrder, 3);
}

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
