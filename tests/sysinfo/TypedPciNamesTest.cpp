#include "sysinfo/TypedPciNames.h"

#include "sysinfo/LibDeviceInfo.h"
#include "tests/kits/kernel/PciTree.h"
#include "tests/support/Rows.h"

namespace {

class TypedPciNamesTest : public testing::Test {
protected:
    TypedPciNamesTest()
    {
        std::filesystem::remove_all(fFolder);
        std::filesystem::create_directory(fFolder);
    }
    const std::string fFolder = DataHome() / "tarvex";
    const std::string fFile = fFolder + "/pci.ids";
};

} // namespace

TEST_F(TypedPciNamesTest, AreKeptBesideWhatTheUserHasWrittenIntoTheirFile)
{
    const std::string texts = TARVEX_TESTS "/sysinfo/typed-names-";
    const std::string before = ReadFile(texts + "before.ids");
    WriteFile(fFile, before);
    TypedPciNames names;
    EXPECT_EQ(names.Vendor(0x1002) + names.Device(0x1002, 0xabc), "Old");
    for (const char* none : { "", "Unknown", "  ", "two\nlines", "\xff" })
        names.SetDevice(0x8086, 1, none);
    names.SetDevice(0x1002, 0xabc, "Old");
    EXPECT_TRUE(names.Save());
    EXPECT_EQ(ReadFile(fFile), before);

    names.SetDevice(0x1002, 0xabc, " New ");
    names.SetDevice(0x1002, 0xabc, "Old"); // another one of the same, whose name was left alone
    names.SetDevice(0x1af4, 0x1041, "");
    names.SetDevice(0x1af4, 0xabc, "Own");
    names.SetVendor(0x1af4, "");
    names.SetDevice(0x8086, 0x1, "A bridge");
    names.SetVendor(0x0002, "Somebody");
    EXPECT_TRUE(names.Save());
    EXPECT_EQ(ReadFile(fFile), ReadFile(texts + "after.ids"));
    names.SetVendor(0x1002, "Mine");
    names.SetVendor(0x0002, "");
    EXPECT_TRUE(names.Save());
    EXPECT_EQ(TypedPciNames().Vendor(0x1002) + TypedPciNames().Device(0x1002, 0xabc), "MineNew");
    for (const auto& [vendor, device] : { std::pair(0x1002, 0xabc), { 0x8087, 1 } }) {
        names.SetDevice(static_cast<uint16>(vendor), static_cast<uint16>(device), "");
        names.SetVendor(static_cast<uint16>(vendor), "");
    }
    EXPECT_TRUE(names.Save());
    EXPECT_EQ(ReadFile(fFile), ReadFile(texts + "at-the-end.ids"));
    WriteFile(fFile, "of another program");
    EXPECT_TRUE(names.Save() && ReadFile(fFile) == "of another program") << "nothing is new";
}

TEST_F(TypedPciNamesTest, CostALineWhereTheyCannotBeReadAndStayAsTheyAre)
{
    const std::string huge((4 << 20) + 1, '#');
    const std::string full = huge.substr(1);
    const Row rows[] = { // a case, what is in the file, what is told of it, what is there then
        { "none", "none", "", "1af4  Virtual\n" },
        { "damaged", "1af4 Cut\nCut too\n1002  ATI", "line 1 has no name\n",
            "1af4 Cut\nCut too\n1002  ATI\n1af4  Virtual\n" },
        { "others", "1002  ATI", "it is no file of yours alone\n", "1002  ATI" },
        { "full", full, "", full }, { "huge", huge, "it has more than 4194304 bytes\n", huge }
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row[0]);
        std::filesystem::remove(fFile);
        if (row[1] != "none")
            WriteFile(fFile, row[1]);
        std::filesystem::permissions(fFolder, std::filesystem::perms { 0755 });
        if (row[0] == "others")
            std::filesystem::permissions(fFile, std::filesystem::perms { 0666 });
        testing::internal::CaptureStderr();
        TypedPciNames names;
        const TypedPciNames again;
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
            row[2].empty() ? "" : "Error reading <" + fFile + ">: " + row[2]);
        names.SetVendor(0x1af4, "");
        EXPECT_TRUE(names.Save()) << "there is nothing to keep";
        names.SetVendor(0x1af4, "Virtual");
        testing::internal::CaptureStderr();
        EXPECT_EQ(names.Save(), row[3] != row[1]);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
            row[3] != row[1] ? "" : "The names typed could not be kept in <" + fFile + ">\n");
        EXPECT_TRUE(ReadFile(fFile) == row[3]);
    }
}

TEST_F(TypedPciNamesTest, AreForDevicesThatTheTablesDoNotKnow)
{
    const ThisMachine tree;
    AddPciFunction(tree, "0000:00:01.0", PciConfig(0x1af4, 0x1041, 0x020000));
    AddPciFunction(tree, "0000:00:02.0", PciConfig(0x1002, 0x0abc, 0x030000));
    AddPciFunction(tree, "0000:00:03.0", PciConfig(0x8086, 0x7190, 0x060000));
    WriteFile(fFile, "1002  Not this\n\t0abc  Radeon\n1af4  Virtual\n8086  No\n\t7190  No\n");
    LibDeviceInfo info;
    using Lines = std::vector<std::string>;
    EXPECT_EQ(TypedPciNames().GiveTo(info),
        (Lines {
            "Display 00:02.0: ATI Technologies, Radeon", "Network 00:01.0: Virtual, Unknown" }));
    LibString text;
    EXPECT_TRUE(info.FindDevice(3, text));
    EXPECT_STREQ(text, "ATI Technologies, Radeon");
    EXPECT_FALSE(info.AllDevicesKnown()) << "who wrote to the maker about it may do so again";

    for (const bool wanted : { false, true, false }) {
        EXPECT_TRUE(TypedPciNames::SetForResults(wanted));
        EXPECT_EQ(TypedPciNames::AreForResults(), wanted);
    }
    std::filesystem::permissions(fFolder, std::filesystem::perms { 0777 });
    testing::internal::CaptureStderr();
    EXPECT_FALSE(TypedPciNames::SetForResults(true));
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "Error writing <" + fFolder + "/names-in-results>\n");
}
