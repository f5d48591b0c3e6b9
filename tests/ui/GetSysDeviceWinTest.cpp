#include "ui/GetSysDeviceWin.h"

#include "sysinfo/TypedPciNames.h"
#include "tests/kits/kernel/PciTree.h"
#include "tests/support/ScreenDriver.h"
#include "tests/support/WithLock.h"
#include "toolkit/LibHelp.h"

#include <Application.h>
#include <Screen.h>
#include <TextControl.h>
#include <TextView.h>

#include <sstream>

namespace {

using screen::Find;

// Counts the 'gsdq' that a closing form sends.
class Listener : public BLooper {
public:
    void MessageReceived(BMessage* message) override { closed += message->what == 'gsdq'; }
    std::atomic<int> closed = 0;
};

// The form for the devices on a tree's buses.
class FormTest : public testing::Test {
protected:
    ~FormTest() override
    {
        if (fForm && fForm->Lock())
            fForm->Quit();
        if (fTarget->Lock())
            fTarget->Quit();
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
    std::string Saved()
    {
        fForm->Save((fTree.Path() + "/saved").c_str());
        return fTree.Read("saved");
    }
    bool IsSelected(const std::string& name)
    {
        return WithLock(fForm, [&] {
            BTextView* text =
                dynamic_cast<BTextControl*>(fForm->FindView(name.c_str()))->TextView();
            int32 start = 0, end = 0;
            text->GetSelection(&start, &end);
            return start == 0 && end == text->TextLength();
        });
    }
    void Fill(const std::string& name, const std::string& text)
    {
        ASSERT_TRUE(screen::Click(name));
        screen::Key("ctrl+a");
        screen::Type(text);
    }

    // Whether a row comes to lie within a box or the window.
    static bool IsSeen(const char* row, const char* within)
    {
        return screen::WaitFor(
            [=] { return screen::Settled(within).Contains(Find(row).frame.InsetByCopy(0, -2)); });
    }
    // Leads the keyboard from the first entry to the last and back.
    static void WalkBetween(const char* first, const char* last, const char* within)
    {
        EXPECT_TRUE(IsSeen(first, within));
        for (const auto& [key, row] : { std::pair("shift+Tab", last), { "Tab", first } }) {
            screen::Key(key);
            EXPECT_TRUE(IsSeen(row, within)) << row;
        }
    }

    static void Choose(const std::string& where, const std::string& item)
    {
        ASSERT_TRUE(screen::Click(where, "", 3));
        ASSERT_TRUE(screen::ClickMenu({ item }));
    }
    // By the keyboard, which opens another form for the same devices.
    void CloseAndOpen()
    {
        const int before = fTarget->closed;
        screen::Key("Escape");
        ASSERT_SOON(fTarget->closed == before + 1);
        ASSERT_TRUE(fForm->Lock());
        fForm->Quit();
        Open();
    }

    const PciNameList names;
    const TempFolder& fData = DataHome();
    BApplication fApplication { "application/x-vnd.Quorvane.FormTest" };
    const MachineTree fTree {};
    Listener* fTarget = new Listener;
    GetSysDeviceWin* fForm = nullptr;
};

} // namespace

TEST_F(FormTest, ListsClassesWithUnknownDevicesAndSavesTheNamesTyped)
{
    AddPciFunction(fTree, "0000:00:00.0", PciConfig(0x8086, 0x7190, 0x060000)); // known
    AddPciFunction(fTree, "0000:00:01.0", PciConfig(0x1002, 0x4758, 0x030000)); // known
    AddPciFunction(fTree, "0000:1a:02.3", PciConfig(0x1002, 0x0abc, 0x030000));
    AddPciFunction(fTree, "0000:00:03.0", PciConfig(0x1af4, 0x1041, 0x020000));
    AddPciFunction(fTree, "0000:00:04.0",
        PciConfig(0x1af4, 0x1041, 0x020000).replace(44, 4, "\x28\x10\x23\x01"));
    LibHelp help;
    help.SetTip("vendor", "no row is called that");
    LibSetToolTips(&help);
    Open();
    LibSetToolTips(nullptr);
    EXPECT_TRUE(screen::ShowsTree("Unknown Devices", "ui/Devices",
        { { "MAKER-1002", names.Vendor(0x1002) }, { "CARD-4758", names.Device(0x1002, 0x4758) },
            { "MAKER-1AF4", names.Vendor(0x1af4) }, { "CARD-1041", names.Device(0x1af4, 0x1041) },
            { "BOARD-MAKER", names.Vendor(0x1028) } }));

    Fill("device_1-2_0xABC", "Typed & kept");
    std::string letters;
    for (int i = 0; i < 50; i++)
        letters += "\xc3\xa4"; // two bytes each
    WithLock(fForm, [&] {
        auto* entry = dynamic_cast<BTextControl*>(fForm->FindView("vendor_2-2_0x1AF4"));
        entry->SetText((letters + "\xc3\xa4").c_str());
    });
    EXPECT_EQ(Find("vendor_2-2_0x1AF4").text, letters);
    Fill("vendor_2-2_0x1AF4", "A vendor of my own");
    Fill("device_2-2_0x1041", "Some card of which the name has more than fifty letters");
    const std::string cut = "Some card of which the name has more than fifty le";
    EXPECT_TRUE(screen::Shows("device_2-2_0x1041", cut));
    screen::Key("Escape");
    ASSERT_SOON(fTarget->closed == 1);
    EXPECT_EQ(Saved(),
        "pci class = <3>, type = <Display>\n"
        "Vendor id <0x1002>, Device id <0x4758>, Vendor <ATI,ATI Technologies>, Device <ATI PCP>\n"
        "Vendor id <0x1002>, Device id <0x0ABC>, Vendor <ATI,ATI Technologies>, "
        "Device <Typed & kept>\n\n"
        "pci class = <2>, type = <Network>\n"
        "Vendor id <0x1AF4>, Device id <0x1041>, Vendor <Unknown,Unknown>, Device <Unknown>\n"
        "Vendor id <0x1AF4>, Device id <0x1041>, Vendor <Unknown,A vendor of my own>, "
        "Device <"
            + cut + ">\n\n");
    fForm->Save("/nonexistent/folder/unknown_devices"); // silently nothing
}

TEST_F(FormTest, WhatIsTypedReplacesTheEntryAndReturnLeadsThroughAllOfThem)
{
    AddPciFunction(fTree, "0000:00:02.0", PciConfig(0x1002, 0x0abc, 0x030000));
    AddPciFunction(fTree, "0000:00:03.0", PciConfig(0x1002, 0x0abc, 0x030000));
    AddPciFunction(fTree, "0000:00:04.0", PciConfig(0x1002, 0x0abc, 0x030000));
    Open();
    // In one go: what follows a Return waits for the next entry.
    screen::Type("?a");
    EXPECT_EQ(system("xdotool key Return key question key b key Return"), 0);
    screen::Type("?c");
    EXPECT_TRUE(screen::Shows("device_1-3_0xABC", "?c"));
    EXPECT_EQ(Find("device_1-1_0xABC").text + Find("device_1-2_0xABC").text, "?a?b");
    EXPECT_TRUE(screen::Click("device_1-1_0xABC"));
    EXPECT_SOON(IsSelected("device_1-1_0xABC"));
    screen::Type("?d");
    EXPECT_TRUE(screen::Shows("device_1-1_0xABC", "?d"));
    EXPECT_TRUE(screen::Click("device_1-1_0xABC")); // puts the caret behind it
    screen::Key("End");
    screen::Type("e");
    EXPECT_TRUE(screen::Shows("device_1-1_0xABC", "?de"));
    EXPECT_EQ(fTarget->closed, 0);
    screen::Key("Escape");
    EXPECT_SOON(fTarget->closed == 1);
    for (int i = 0; i < 3; i++)
        screen::Key("Return");
    EXPECT_SOON(fTarget->closed == 2);
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
        bars += line.find("ScrollBar") == line.npos ? "" : line + "\n";
    EXPECT_EQ(bars,
        "      ScrollBar _VSB_ \"rows\" = 18 335 93 9x211 to 32 by 25 and 210 #efefef\n"
        "      ScrollBar _VSB_ \"rows\" = 18 335 328 9x211 to 32 by 25 and 210 #efefef\n"
        "      ScrollBar _VSB_ \"rows\" = 18 335 563 9x211 to 32 by 25 and 210 #efefef\n"
        "  ScrollBar _VSB_ \"view\" = 0 356 0 14x708 to 78 by 25 and 707 #efefef\n");
    WalkBetween("device_1-1_0xAB0", "device_3-9_0xAB8", "Unknown Devices");
    EXPECT_TRUE(screen::Click("device_1-1_0xAB0", "", 5)); // the wheel
    EXPECT_TRUE(IsSeen("device_1-9_0xAB8", "Display"));
}

TEST_F(FormTest, CompletesNamesThatTheSystemKnows)
{
    AddPciFunction(fTree, "0000:00:03.0", PciConfig(0x1af4, 0x1041, 0x020000));
    Open();
    const std::string vendor = names.Vendor(0x1af4), device = names.Device(0x1af4, 0x1041);
    Fill("vendor_1-1_0x1AF4", vendor.substr(0, 1));
    EXPECT_SOON(Find("vendor_1-1_0x1AF4").text == vendor)
        << "the machine's own vendor comes before all others";
    Fill("vendor_1-1_0x1AF4", vendor.substr(0, 1)); // over the whole of it
    EXPECT_TRUE(screen::Shows("vendor_1-1_0x1AF4", vendor));
    Fill("device_1-1_0x1041", device.substr(0, 2));
    EXPECT_TRUE(screen::Shows("device_1-1_0x1041", device));
    screen::Type("?"); // replaces what was put behind
    EXPECT_TRUE(screen::Shows("device_1-1_0x1041", device.substr(0, 2) + "?"));
    screen::Key("BackSpace");
    EXPECT_TRUE(screen::Shows("device_1-1_0x1041", device.substr(0, 2)))
        << "whoever deletes does not want it back";
    Fill("vendor_1-1_0x1AF4", "matrox e");
    EXPECT_TRUE(screen::Shows("vendor_1-1_0x1AF4", "matrox electronics Systems Ltd."));
}

TEST_F(FormTest, ItsMenuFillsInWhatIsKnownAndTypedNamesComeBack)
{
    const std::string vendor = names.Vendor(0x1af4), device = names.Device(0x1af4, 0x1041);
    const std::string longName = names.Device(0x1000, 0x00ac);
    AddPciFunction(fTree, "0000:00:02.0", PciConfig(0x1002, 0x0abc, 0x030000));
    AddPciFunction(fTree, "0000:00:01.0", PciConfig(0x1000, 0x00ac, 0x010000));
    AddPciFunction(fTree, "0000:00:03.0", PciConfig(0x1af4, 0x1041, 0x020000));
    Open();
    Fill("device_1-1_0xABC", "?mine");
    Fill("vendor_3-1_0x1AF4", "?two");
    Choose("instructions1", "Names from the list");
    EXPECT_TRUE(screen::Shows("device_3-1_0x1041", device));
    EXPECT_EQ(Find("vendor_3-1_0x1AF4").text, "?two");
    EXPECT_EQ(Find("device_2-1_0xAC").text, longName.substr(0, 50));
    EXPECT_FALSE(TypedPciNames::AreForResults());
    Choose("device_2-1_0xAC", "Names in results");
    EXPECT_SOON(TypedPciNames::AreForResults());
    CloseAndOpen();
    EXPECT_EQ(ReadFile(fData / "tarvex/pci.ids"),
        "1002  ATI Technologies\n\t0abc  ?mine\n1000  Symbios Logic Inc.\n\t00ac  " + longName
            + "\n1af4  ?two\n\t1041  " + device + "\n");
    EXPECT_EQ(Find("device_1-1_0xABC").text, "?mine");
    EXPECT_EQ(Find("vendor_3-1_0x1AF4").text, "?two");

    screen::Key("ctrl+r");
    EXPECT_SOON(!TypedPciNames::AreForResults());
    Fill("vendor_3-1_0x1AF4", "Unknown");
    WriteFile(fData / "tarvex/pci.ids", "1002  ATI\n\t0abc  edited\n1af4  ?two\n");
    CloseAndOpen();
    EXPECT_EQ(Find("device_1-1_0xABC").text, "edited") << "what nobody typed over stays as it is";
    EXPECT_EQ(Find("vendor_3-1_0x1AF4").text, "Unknown");
    screen::Key("ctrl+l");
    EXPECT_TRUE(screen::Shows("vendor_3-1_0x1AF4", vendor));
}
