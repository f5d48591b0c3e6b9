#include "ui/GetSysDeviceWin.h"

#include "sysinfo/TypedPciNames.h"
#include "tests/kits/app/TestLooper.h"
#include "tests/kits/kernel/PciTree.h"
#include "tests/support/Steps.h"
#include "tests/support/WithLock.h"
#include "toolkit/LibHelp.h"

#include <Application.h>
#include <Screen.h>

namespace {

using screen::Find;

// The form for the devices on a tree's buses.
class FormTest : public testing::Test {
protected:
    ~FormTest() override
    {
        if (fForm)
            QuitNow(fForm);
        QuitNow(fTarget);
    }
    void SetUp() override
    {
        std::filesystem::remove_all(fData / "tarvex");
        fTarget->Run();
        if (names.Device(0x1000, 0x00ac).size() <= 50)
            GTEST_SKIP() << "the system has no list of PCI names";
    }
    void Open()
    {
        const RootGuard root(fTree.Path());
        LibDeviceInfo info;
        fForm = new GetSysDeviceWin(info, fTarget);
        fForm->Show();
        ASSERT_TRUE(screen::BecomesActive("Unknown Devices"));
    }
    // Whether a row comes to lie within a box or the window.
    static bool IsSeen(const char* row, const char* within)
    {
        return screen::WaitFor(
            [=] { return screen::Settled(within).Contains(Find(row).frame.InsetByCopy(0, -2)); });
    }
    // Beside the usual steps: an entry is filled with a text, a menu opened on a view, the form is
    // closed so many times in all, and opened for the same devices again; the user wants names in
    // results. Words of names stand for others.
    void FollowSteps(const std::string& file, const std::map<std::string, std::string>& words = {})
    {
        const auto type = [](const Row& row) {
            ASSERT_TRUE(screen::Click(row[1]));
            screen::Key("ctrl+a");
            screen::Type(row[2]);
        };
        Follow(file,
            {
                { "fill", type },
                { "menu on", [](const Row& row) { EXPECT_TRUE(screen::Click(row[1], "", 3)); } },
                { "closed", [this](const Row& row) { EXPECT_SOON(fClosed == std::stoi(row[1])); } },
                { "reopen", [this](const Row&) { QuitNow(fForm), Open(); } },
                { "at once",
                    [](const Row& row) {
                        EXPECT_EQ(system(("xdotool key " + row[1]).c_str()), 0);
                    } },
                { "copied",
                    [](const Row& row) {
                        EXPECT_SOON(
                            (screen::Key("ctrl+c"), screen::Copied("text/plain") == row[1]));
                    } },
                { "for results",
                    [](const Row& row) {
                        EXPECT_SOON(TypedPciNames::AreForResults() == (row[1] == "yes"));
                    } },
            },
            words);
    }

    const PciNameList names;
    const TempFolder& fData = DataHome();
    BApplication fApplication { "application/x-vnd.Quorvane.FormTest" };
    const MachineTree fTree {};
    std::atomic<int> fClosed = 0;
    TestLooper* fTarget = new TestLooper(
        [this](TestLooper&, BMessage* message) { fClosed += message->what == 'gsdq'; });
    GetSysDeviceWin* fForm = nullptr;
};

} // namespace

TEST_F(FormTest, ListsClassesWithUnknownDevicesAndSavesTheNamesTyped)
{
    AddPciFunction(fTree, "0000:00:00.0", PciConfig(0x8086, 0x7190, 0x060000)); // known
    AddPciFunction(fTree, "0000:00:01.0", PciConfig(0x1002, 0x4758, 0x030000)); // known
    AddPciFunction(fTree, "0000:1a:02.3",
        PciConfig(0x1002, 0x0abc, 0x030000).replace(44, 4, "\xff\xff\x23\x01")); // on no board
    AddPciFunction(fTree, "0000:00:03.0", PciConfig(0x1af4, 0x1041, 0x020000));
    AddPciFunction(fTree, "0000:00:04.0",
        PciConfig(0x1af4, 0x1000, 0x020000).replace(44, 4, "\xde\x01\xfb\xff"));
    LibHelp help;
    help.SetTip("vendor", "no row is called that");
    LibSetToolTips(&help);
    Open();
    LibSetToolTips(nullptr);
    EXPECT_TRUE(screen::ShowsTree("Unknown Devices", "ui/Devices",
        { { "MAKER-1002", names.Vendor(0x1002) }, { "CARD-4758", names.Device(0x1002, 0x4758) },
            { "MAKER-1AF4", names.Vendor(0x1af4) }, { "CARD-1041", names.Device(0x1af4, 0x1041) },
            { "CARD-1000", names.Device(0x1af4, 0x1000) },
            { "BOARD",
                names.Vendor(0x01de) + ", " + names.Subsystem(0x1af4, 0x1000, 0x01de, 0xfffb) } }));

    std::string letters;
    for (int i = 0; i < 50; i++)
        letters += "\xc3\xa4"; // two bytes each
    WithLock(fForm, [&] { fForm->FillIn({ { "vendor_2-1_0x1AF4", letters + "\xc3\xa4" } }); });
    EXPECT_EQ(Find("vendor_2-1_0x1AF4").text, letters);
    const std::string cut = "Some card of which the name has more than fifty le";
    testing::internal::CaptureStderr();
    FollowSteps("ui/Typing.steps");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
        "device_1-2_0xABC found <Typed & kept>\nvendor_2-1_0x1AF4 found <A vendor of my own>\n"
        "device_2-1_0x1041 found <Unknown>\nvendor_2-2_0x1AF4 found <Unknown>\n"
        "device_2-2_0x1000 found <"
            + cut + ">\n");
    fForm->Save((fTree / "saved").c_str());
    EXPECT_EQ(fTree.Read("saved"),
        "pci class = <3>, type = <Display>\n"
        "Vendor id <0x1002>, Device id <0x4758>, Vendor <ATI,ATI Technologies>, Device <ATI PCP>\n"
        "Vendor id <0x1002>, Device id <0x0ABC>, Vendor <ATI,ATI Technologies>, "
        "Device <Typed & kept>\n\n"
        "pci class = <2>, type = <Network>\n"
        "Vendor id <0x1AF4>, Device id <0x1041>, Vendor <Unknown,A vendor of my own>, "
        "Device <Unknown>\n"
        "Vendor id <0x1AF4>, Device id <0x1000>, Vendor <Unknown,Unknown>, Device <"
            + cut + ">\n\n");
    fForm->Save("/nonexistent/folder/unknown_devices"); // silently nothing
}

TEST_F(FormTest, WhatIsTypedReplacesTheEntryAndReturnLeadsThroughAllOfThem)
{
    AddPciFunction(fTree, "0000:00:02.0", PciConfig(0x1002, 0x0abc, 0x030000));
    AddPciFunction(fTree, "0000:00:03.0", PciConfig(0x1002, 0x0abc, 0x030000));
    AddPciFunction(fTree, "0000:00:04.0", PciConfig(0x1002, 0x0abc, 0x030000));
    Open();
    FollowSteps("ui/Entries.steps");
}

TEST_F(FormTest, RowsBelowTheirBoxAreScrolledIntoItAndBoxesIntoTheWindow)
{
    for (int i = 0; i < 27; i++) {
        const std::string place =
            "0000:0" + std::to_string(i / 9) + ":0" + std::to_string(i % 9) + ".0";
        AddPciFunction(
            fTree, place, PciConfig(0x1002, 0x0ab0 + i % 9, 0x020000 + i / 9 * 0x010000));
    }
    Open();
    std::string bars;
    std::istringstream tree(screen::Tree("Unknown Devices"));
    for (std::string line; std::getline(tree, line);)
        bars += std::regex_search(line, std::regex("ScrollBar|Client view")) ? line + "\n" : "";
    EXPECT_EQ(bars,
        "  Client view \"\" 0 0 356x708 #d8d8d8\n"
        "      ScrollBar _VSB_ \"rows\" = 18 335 93 9x211 to 32 by 25 and 210 #efefef\n"
        "      ScrollBar _VSB_ \"rows\" = 18 335 328 9x211 to 32 by 25 and 210 #efefef\n"
        "      ScrollBar _VSB_ \"rows\" = 18 335 563 9x211 to 32 by 25 and 210 #efefef\n"
        "  ScrollBar _VSB_ \"view\" = 0 356 0 14x708 to 78 by 25 and 707 #efefef\n");
    EXPECT_TRUE(IsSeen("device_1-1_0xAB0", "Unknown Devices"));
    screen::Key("shift+Tab");
    EXPECT_TRUE(IsSeen("device_3-9_0xAB8", "Unknown Devices"));
    screen::Key("Tab");
    EXPECT_TRUE(IsSeen("device_1-1_0xAB0", "Unknown Devices"));
    EXPECT_TRUE(screen::Click("device_1-1_0xAB0", "", 5)); // the wheel
    EXPECT_TRUE(IsSeen("device_1-9_0xAB8", "Display"));
}

TEST_F(FormTest, CompletesNamesThatTheSystemKnows)
{
    AddPciFunction(fTree, "0000:00:03.0", PciConfig(0x1af4, 0x1041, 0x020000));
    Open();
    const std::string vendor = names.Vendor(0x1af4), device = names.Device(0x1af4, 0x1041);
    FollowSteps("ui/Completions.steps",
        { { "VENDOR", vendor }, { "DEVICE", device }, { "BEGUN-VENDOR", vendor.substr(0, 1) },
            { "BEGUN-DEVICE", device.substr(0, 2) } });
}

TEST_F(FormTest, ItsMenuFillsInWhatIsKnownAndTypedNamesComeBack)
{
    const std::string vendor = names.Vendor(0x1af4), device = names.Device(0x1af4, 0x1041);
    const std::string longName = names.Device(0x1000, 0x00ac);
    AddPciFunction(fTree, "0000:00:02.0", PciConfig(0x1002, 0x0abc, 0x030000));
    AddPciFunction(fTree, "0000:00:01.0", PciConfig(0x1000, 0x00ac, 0x010000));
    AddPciFunction(fTree, "0000:00:03.0", PciConfig(0x1af4, 0x1041, 0x020000));
    Open();
    const std::map<std::string, std::string> words { { "VENDOR", vendor }, { "DEVICE", device },
        { "FIFTY-LETTERS", longName.substr(0, 50) } };
    FollowSteps("ui/Names.steps", words);
    EXPECT_EQ(ReadFile(fData / "tarvex/pci.ids"),
        "1002  ATI Technologies\n\t0abc  ?mine\n1000  Symbios Logic Inc.\n\t00ac  " + longName
            + "\n1af4  ?two\n\t1041  " + device + "\n");
    WriteFile(fData / "tarvex/pci.ids", "1002  ATI\n\t0abc  edited\n1af4  ?two\n");
    FollowSteps("ui/EditedNames.steps", words);
}
