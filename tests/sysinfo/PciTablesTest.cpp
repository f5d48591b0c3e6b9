#include "sysinfo/PciTables.h"

#include <cstring>
#include <map>

#include <gtest/gtest.h>

namespace {

template <class Row>
std::vector<Row> RowsOf(const Row* table)
{
    std::vector<Row> rows;
    for (; table->vendorId < 0xFFFF; table++)
        rows.push_back(*table);
    return rows;
}

bool IsEqual(const PciVendorRow& a, const PciVendorRow& b)
{
    return a.vendorId == b.vendorId && !strcmp(a.shortName, b.shortName)
        && !strcmp(a.longName, b.longName);
}

bool IsEqual(const PciDeviceRow& a, const PciDeviceRow& b)
{
    return a.vendorId == b.vendorId && a.deviceId == b.deviceId && !strcmp(a.chip, b.chip)
        && !strcmp(a.description, b.description);
}

// Whether the rows stand in the table, in this order.
template <class Row, size_t n>
void ExpectInOrder(const std::vector<Row>& rows, const Row (&stated)[n])
{
    auto place = rows.begin();
    for (const Row& wanted : stated) {
        place =
            std::find_if(place, rows.end(), [&](const Row& row) { return IsEqual(row, wanted); });
        ASSERT_NE(place, rows.end()) << "row " << &wanted - stated;
    }
}

} // namespace

TEST(PciTables, VendorsAreOrderedAndTwoAreDoubled)
{
    const auto rows = RowsOf(g_vendor_table);
    int doubled = 0;
    for (size_t i = 1; i < rows.size(); i++) {
        EXPECT_LE(rows[i - 1].vendorId, rows[i].vendorId);
        EXPECT_TRUE(*rows[i].shortName && *rows[i].longName) << rows[i].vendorId;
        doubled += rows[i - 1].vendorId == rows[i].vendorId;
    }
    EXPECT_EQ(rows.size(), 578u);
    EXPECT_EQ(doubled, 2);
    EXPECT_TRUE(IsEqual(g_vendor_table[578], { 0xFFFF, "BAD!", "ILLEGITIMATE VENDOR ID" }));
    EXPECT_EQ(rows[0].vendorId, 0x003D);
    ExpectInOrder<PciVendorRow>(rows,
        { { 0x003D, "Lockheed Martin", "Lockheed Martin Corp" }, { 0x0E11, "Compaq", "Compaq" },
            { 0x1000, "SYM", "Symbios Logic Inc." }, { 0x1002, "ATI", "ATI Technologies" },
            { 0x1013, "Cirrus", "Cirrus Logic" }, { 0x102B, "Matrox", "Matrox" },
            { 0x1097, "Appian", "Appian Technology" }, { 0x1097, "Appian", "Appian Graphics" },
            { 0x10AF, "MCS", "Micro Computer Systems, Inc." },
            { 0x10AF, "MS", "Microcomputer Sysytems" }, { 0x10DE, "Nvidia", "Nvidia Corporation" },
            { 0x121A, "3dfx", "3dfx Interactive Inc" }, { 0x5333, "S3", "S3 Incorporated" },
            { 0x8086, "Intel", "Intel Corporation" } });
}

TEST(PciTables, DevicesAreGroupedByVendorAndThreeStandOutOfOrder)
{
    const auto rows = RowsOf(g_device_table);
    std::map<uint32, int> vendors, devices;
    for (const PciVendorRow& vendor : RowsOf(g_vendor_table))
        vendors[vendor.vendorId]++;
    int withoutChip = 0, withoutDescription = 0, outOfOrder = 0, doubled = 0;
    uint32 before = 0;
    for (const PciDeviceRow& row : rows) {
        const uint32 id = static_cast<uint32>(row.vendorId) << 16 | row.deviceId;
        EXPECT_TRUE(vendors.contains(row.vendorId)) << row.vendorId;
        EXPECT_LE(before >> 16, row.vendorId);
        EXPECT_LE(++devices[id], 2);
        doubled += devices[id] == 2;
        withoutChip += *row.chip == 0;
        withoutDescription += *row.description == 0;
        outOfOrder += id < before;
        before = id;
    }
    EXPECT_EQ(rows.size(), 521u);
    EXPECT_EQ(withoutChip, 130);
    EXPECT_EQ(withoutDescription, 33);
    EXPECT_EQ(outOfOrder, 3);
    EXPECT_EQ(doubled, 8);
    ExpectInOrder<PciDeviceRow>(rows,
        { { 0x0E11, 0x0001, "EISA Bridge", "" }, { 0x0E11, 0x1000, "", "Triflex/PCI CPU Bridge" },
            { 0x1000, 0x0001, "53C810", "Fast/Narrow SCSI I/O Cntrl" },
            { 0x1002, 0x4758, "ATI PCP", "ATI PCP" },
            { 0x1002, 0x4758, "210888GX", "Mach 64 (WinTurbo)" },
            { 0x121A, 0x0001, "Monster", "Monster 3D" },
            { 0x8086, 0x7000, "82371SB", "PIIX3 ISA Bridge (Triton II)" },
            { 0x8086, 0x7110, "82371AB", "PIIX4 ISA Bridge" },
            { 0x8086, 0x7110, "Fireball", "Fireball" } });
}
