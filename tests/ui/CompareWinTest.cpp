// The comparison as a user sees it: real clicks, the screen's pixels, the store's real file.
#include "ui/CompareWin.h"

#include "results/ComparisonChart.h"
#include "tests/kits/app/TestLooper.h"
#include "tests/results/ComparedRun.h"
#include "tests/results/MadeRuns.h"
#include "tests/support/ScreenDriver.h"
#include "tests/support/Test.h"
#include "tests/support/WithLock.h"

#include <Application.h>
#include <Entry.h>
#include <Message.h>
#include <ScrollBar.h>

namespace {

using screen::Find;
using screen::Shows;
using screen::WaitFor;

// Drags a file from another program's window, at (20, 650), as a user does; moves until the place
// takes it.
void DragFromAnotherProgram(const std::string& file, BPoint to)
{
    const std::string command = TARVEX_BUILD "/test_dragsource " + file
        + " 2>taken & echo $! >process; xdotool search --sync --onlyvisible --name '^Files$'"
          " mousemove 60 690 mousedown 1";
    EXPECT_EQ(system(command.c_str()), 0);
    EXPECT_TRUE(WaitFor([&to] {
        to.x += 1;
        screen::MoveTo(to);
        return ReadFile("taken").ends_with("taken\n");
    }));
    EXPECT_EQ(system("xdotool mouseup 1"), 0);
}

class CompareWinTest : public testing::Test {
protected:
    void SetUp() override
    {
        std::filesystem::remove_all(DataHome() / "tarvex");
        std::filesystem::current_path(folder.Path());
        target->Run();
        Open();
    }
    void TearDown() override
    {
        if (window)
            Close();
        std::filesystem::current_path("/");
    }

    void Open(bool allowSave = true)
    {
        window = new CompareWin(target, allowSave);
        window->Show();
        ASSERT_TRUE(screen::BecomesActive("Tarvex Comparisons"));
    }
    void Close()
    {
        ASSERT_TRUE(window->Lock());
        window->Quit();
        window = nullptr;
    }
    void Run()
    {
        FillRun(run);
        window->SetResults(run);
    }
    std::string File(const std::string& name, const std::string& contents)
    {
        WriteFile(folder / name, contents);
        return folder / name;
    }
    // The colour at a value of the scale 0 to maxScale, in the middle of a row's bar.
    uint32 BarAt(int row, double value, double maxScale)
    {
        const BRect chart = Find("DrawView").frame;
        const BPoint place(320 + static_cast<float>((chart.Width() - 320) * value / maxScale), 0);
        const BPoint bar = PictureOf(row) - BPoint(9, 0) + place;
        return screen::PixelsIn(BRect(bar, bar))[0];
    }
    bool BarEndsAt(int row, double value, double maxScale, uint32 color)
    {
        return BarAt(row, value - maxScale / 100, maxScale) == color
            && BarAt(row, value + maxScale / 100, maxScale) != color;
    }
    BPoint PictureOf(int row) const
    {
        return Find("DrawView").frame.LeftTop() + BPoint(9, 19 + 17 * static_cast<float>(row) + 8);
    }
    // That the rows below the caption come to be these.
    static void ExpectRows(const std::string& expected)
    {
        EXPECT_SOON(screen::Lines("DrawView").ends_with(" )\n" + expected))
            << screen::Lines("DrawView") << "not\n" + expected;
    }
    void ChooseFor(int row, const std::vector<std::string>& items)
    {
        screen::ClickAt(PictureOf(row) + BPoint(30, 0), 3);
        ASSERT_TRUE(screen::ClickMenu(items));
    }

    const TempFolder folder;
    BApplication app { "application/x-vnd.Quorvane.CompareTest" };
    std::atomic<int> closed = 0;
    TestLooper* target = new TestLooper(
        [this](TestLooper&, BMessage* message) { closed += message->what == 'cmpq'; });
    CompareWin* window = nullptr;
    Results run { true };
    const std::string own = "This (2-x), 2 CPU 400.0, 1 CPU 100.0\n";
    const std::string other = "Other (1-y), 1 CPU 200.0\n";
    const std::string ownIsSelected = "Selected: This (2-x)\n";
};

} // namespace

TEST_F(CompareWinTest, BarsAreAsLongAsTheirRatesAndTheUserChoosesTestPercentAndColour)
{
    Run();
    window->LoadResults(MachineFile(folder).c_str());
    EXPECT_TRUE(screen::ShowsTree("Tarvex Comparisons", "ui/Comparisons"));
    ASSERT_SOON(BarEndsAt(1, 200, 410, 0x0000c8)); // of the scale's 410
    EXPECT_TRUE(BarEndsAt(0, 400, 410, 0x00b200));
    EXPECT_TRUE(BarEndsAt(0, 100, 410, 0x0000c8)) << "the shorter bar lies over the longer one";

    // Opens the machine's two devices, and folds them in again.
    screen::ClickAt(PictureOf(1));
    ExpectRows(own + other + "Screen, a screen\nBridge , Maker, Bridge\n" + ownIsSelected);
    screen::Key("Right");
    screen::Key("Return");
    ExpectRows(own + other + "Selected: Other (1-y)\n");
    ASSERT_TRUE(screen::Click("ratio"));
    ExpectRows("This (2-x), 2 CPU 200.0%, 1 CPU 50.0%\nOther (1-y), 1 CPU 100.0%\n"
               "Selected: Other (1-y)\n");
    screen::ClickAt(PictureOf(0) + BPoint(30, 0)); // beside the picture a click selects
    ExpectRows("This (2-x), 2 CPU 100.0%, 1 CPU 25.0%\nOther (1-y), 1 CPU 50.0%\n" + ownIsSelected);
    ASSERT_TRUE(screen::Click("ratio"));

    ASSERT_TRUE(screen::Click("choices"));
    ASSERT_SOON(screen::FindMenuItem("Memory").exists);
    screen::Key("Down"); // from the present choice
    screen::Key("Return");
    ExpectRows("This (2-x), 1 CPU 50.0\nOther (1-y)\n" + ownIsSelected);

    screen::ClickAt(Find("legend").frame.LeftTop() + BPoint(5, 8));
    ASSERT_TRUE(screen::BecomesActive("Color of 1 CPU"));
    screen::ClickAt(Find("swatches").frame.LeftTop() + BPoint(2, 2)); // black
    EXPECT_SOON(BarEndsAt(0, 50, 60, 0));
    EXPECT_FALSE(screen::IsActive("Color of 1 CPU"));
}

TEST_F(CompareWinTest, KeysScrollTheChartWhoseBarKnowsItsHeight)
{
    const auto becomes = [](float width) { // as small as it can be; the window before may be found
        return screen::WaitFor([=] {
            screen::ResizeWindow("Tarvex Comparisons", BPoint(100, 100));
            return Find("bgview").frame.Width() == width;
        });
    };
    EXPECT_TRUE(becomes(650));
    Close();
    Open(false);
    std::string machines = "1.0\n";
    for (int i = 0; i < 12; i++)
        machines += MadeResults("M (1-)", "700:" + std::to_string(10 + i) + "/1.0;").substr(4);
    BMessage files;
    entry_ref ref;
    get_ref_for_path(File("many", machines).c_str(), &ref);
    files.AddRef("refs", &ref);
    window->OpenFiles(&files);
    EXPECT_TRUE(becomes(560));
    EXPECT_TRUE(screen::ShowsTree("Tarvex Comparisons", "ui/SmallComparisons"));
    auto* bar =
        WithLock(window, [&] { return window->FindView("DrawView")->ScrollBar(B_VERTICAL); });
    const std::pair<const char*, float> rows[] = { { "Down", 17 }, { "Next", 94 }, { "Up", 77 },
        { "End", 129 }, { "Down", 129 }, { "Prior", 52 }, { "Down", 69 }, { "Home", 0 } };
    for (const auto& row : rows) {
        screen::Key(row.first);
        EXPECT_SOON(WithLock(window, [&] { return bar->Value(); }) == row.second) << row.first;
    }
}

TEST_F(CompareWinTest, TheMenuOfAMachineForgetsAndOrdersWhatTipsTellOf)
{
    Run();
    window->LoadResults(MachineFile(folder).c_str());
    window->LoadResults(File("more", MadeResults("<b>A</b> (1-)", "700:90/1.0;")).c_str());
    const std::string more = "<b>A</b> (1-), 1 CPU 90.0\n";
    ExpectRows(own + other + more + ownIsSelected);
    EXPECT_TRUE(Shows("line", "1 machine added"));
    screen::MoveTo(PictureOf(2) + BPoint(60, 0));
    EXPECT_TRUE(Shows("qtooltip_label",
        "<\u2060b>A</b> (1-)\n1 CPU: 90.0 IPS, 22.5 percent of the selection\nRead from "
            + (folder / "more")));
    screen::MoveTo(Find("DrawView").frame.LeftTop() + BPoint(120, 8));
    EXPECT_TRUE(Shows("qtooltip_label", "Work in a second: more is better"));
    WithLock(window, [&] { window->FindView("DrawView")->SetToolTip("Anew"); });
    for (const bool isAbove : { false, true, false }) {
        screen::MoveTo(PictureOf(isAbove ? 0 : 9) + BPoint(60, 0));
        EXPECT_SOON((Find("qtooltip_label").text == "Anew") != isAbove);
    }

    ChooseFor(2, { "Order", "By name" });
    ExpectRows(more + other + own + "Selected: <b>A</b> (1-)\n");
    screen::Key("Right"); // from the machine that the menu was for
    screen::Key("Delete");
    ExpectRows(more + own + ownIsSelected);
    ChooseFor(1, { "Forget all others" });
    ExpectRows(own + ownIsSelected);
    EXPECT_TRUE(Shows("line",
        "1 machine forgotten; Ctrl+Z brings back what was forgotten since this window was "
        "opened"));
    Close();
    Open(); // what was forgotten is not stored, and the order stays
    window->LoadResults(MachineFile(folder).c_str());
    Run();
    ExpectRows(other + own + ownIsSelected);
    screen::Key("Right");
    screen::Key("shift+F10");
    ASSERT_TRUE(screen::ClickMenu({ "Order", "By rate" }));
    ExpectRows(own + other + ownIsSelected);
    screen::Key("Left");
    screen::Key("Delete");
    EXPECT_TRUE(Shows("line", "The run on this machine is not kept, so it cannot be forgotten"));
    screen::Key("Right");
    screen::Key("Delete");
    ExpectRows(own + ownIsSelected);
    screen::Key("ctrl+z");
    ExpectRows(own + other + "Selected: Other (1-y)\n");
    EXPECT_TRUE(Shows("line", "1 machine is back"));
    Close();
    Open();
    window->LoadResults((folder / "none").c_str());
    EXPECT_TRUE(Shows("line", "none cannot be read: No such file or directory"));
    Run();
    ExpectRows(own + other + ownIsSelected); // it is stored again
    ChooseFor(1, { "Order", "As added" }); // for other tests
    screen::ClickAt(PictureOf(1) + BPoint(30, 0), 3);
    EXPECT_TRUE(screen::ShowsTree("", "ui/ChartMenu")); // open while the window goes
}

TEST_F(CompareWinTest, TheChartIsCopiedAndSavedAsAPicture)
{
    screen::Key("ctrl+c");
    EXPECT_TRUE(Shows("line", "Nothing to copy: no test is chosen"));
    Run();
    screen::Key("ctrl+c");
    EXPECT_TRUE(Shows("line", "Copied: the table as text, the chart as a picture"));
    EXPECT_EQ(screen::Copied("text/plain"),
        "Sieve (IPS), percent of This (2-x)\n"
        "Machine     2 CPU  1 CPU  Percent\n"
        "This (2-x)  400.0  100.0    100.0\n");
    EXPECT_TRUE(screen::Copied("image/png").starts_with("\x89PNG"));
    EXPECT_NE(screen::Copied("image/svg+xml").find("This (2-x)"), std::string::npos);
    for (const char* const name : { "chart.svg", "chart.doc" }) {
        ChooseFor(0, { "Save picture..." });
        ASSERT_TRUE(screen::BecomesActive("Save As"));
        EXPECT_TRUE(Shows("fileNameEdit", "Tarvex.svg"));
        screen::Key("ctrl+a");
        screen::Type(folder / name);
        screen::Key("Return");
        ASSERT_TRUE(screen::BecomesActive("Tarvex Comparisons"));
    }
    EXPECT_TRUE(Shows("line",
        "Could not write " + (folder / "chart.doc")
            + ": a picture's name ends in .svg, .png or .pdf"));
    EXPECT_NE(ReadFile(folder / "chart.svg").find("This (2-x)"), std::string::npos);
}

TEST_F(CompareWinTest, KeysChooseColoursFromALegendThatCanBeRead)
{
    Run();
    const BPoint text = Find("legend").frame.LeftTop() + BPoint(20, 2);
    EXPECT_SOON(screen::ContrastIn(BRect(text, text + BPoint(35, 14))) > 100);
    const auto showsCursor = [](int entry) {
        const BPoint cursor = Find("legend").frame.LeftBottom()
            + BPoint(ComparisonChart::kLegendEntryWidth * static_cast<float>(entry) + 5, 0);
        return screen::ContrastIn(BRect(cursor, cursor + BPoint(0, 2))) > 0;
    };
    screen::Key("Tab");
    EXPECT_SOON(showsCursor(0));
    screen::Key("Right");
    EXPECT_SOON(showsCursor(1) && !showsCursor(0));
    screen::Key("Return");
    ASSERT_TRUE(screen::BecomesActive("Color of 2 CPU"));
    EXPECT_SOON(!showsCursor(1)) << "the keyboard is elsewhere";
    EXPECT_TRUE(
        screen::ShowsTree("Color of 2 CPU", "ui/Color")); // with the nearest to { 0, 178, 0 }
    const BRect swatches = Find("swatches").frame;
    // Red grows from block to block of six, green downwards and blue to the right in each.
    const std::vector<uint32> pixels = screen::PixelsIn(swatches);
    const auto pixel = [&](int column, int row, int inside) {
        return pixels[(row * 18 + inside) * 324 + column * 18 + inside];
    };
    for (int i = 0; i < 216; i++) {
        const int column = i % 18, row = i / 18, red = column / 6 + row / 6 * 3;
        EXPECT_EQ(pixel(column, row, 9), red * 0x330000 + row % 6 * 0x3300 + column % 6 * 0x33);
    }
    EXPECT_EQ(pixel(0, 3, 0), 0) << "the cursor: black,";
    EXPECT_EQ(pixel(0, 3, 1), 0xffffff) << "white,";
    EXPECT_EQ(pixel(0, 3, 2), 0x009900) << "then the swatch";
    const struct {
        const char* key;
        int times; // one too many: at an edge it stays
        const char* said;
    } rows[] = {
        { "Up", 4, "Red 0, green 0, blue 0\n" },
        { "Left", 1, "Red 0, green 0, blue 0\n" },
        { "Down", 12, "Red 153, green 255, blue 0\n" },
        { "Right", 18, "Red 255, green 255, blue 255\n" },
        { "Left", 1, "Red 255, green 255, blue 204\n" },
    };
    for (const auto& row : rows) {
        for (int i = 0; i < row.times; i++)
            screen::Key(row.key);
        EXPECT_SOON(screen::Lines("swatches") == row.said) << screen::Lines("swatches");
    }
    screen::Key("Return");
    EXPECT_SOON(BarAt(0, 390, 410) == 0xffffcc);
    const BPoint swatch = text + BPoint(ComparisonChart::kLegendEntryWidth - 15, 6);
    EXPECT_SOON(screen::PixelsIn(BRect(swatch, swatch))[0] == 0xffffcc);
    EXPECT_FALSE(screen::IsActive("Color of 2 CPU"));
    screen::Key("Return");
    ASSERT_TRUE(screen::BecomesActive("Color of 2 CPU"));
    screen::ClickAt(swatches.RightBottom());
    EXPECT_SOON(BarAt(0, 390, 410) == 0xffffff);
    screen::Key("Return");
    ASSERT_TRUE(screen::BecomesActive("Color of 2 CPU"));
    screen::Key("Left");
    screen::Key("Escape");
    ASSERT_TRUE(screen::BecomesActive("Tarvex Comparisons"));
    EXPECT_EQ(BarAt(0, 390, 410), 0xffffffu);
}

TEST_F(CompareWinTest, FilesDraggedFromAnotherProgramAreShown)
{
    Run();
    ExpectRows(own + ownIsSelected);
    DragFromAnotherProgram(
        MachineFile(folder), Find("DrawView").frame.LeftTop() + BPoint(200, 150));
    ExpectRows(own + other + ownIsSelected);
    EXPECT_EQ(system("kill $(cat process)"), 0);
}

TEST_F(CompareWinTest, DroppedTextFilesAreThereAgainAndTheTableIsWritten)
{
    BMessage dropped(B_SIMPLE_DATA);
    for (const std::string& path :
        { File("note.html", "1.0\n15\nN (1-)\t700:9/3;\n"), File("other.txt", "1.0\n"),
            MachineFile(folder), File("again.txt", "1.0\n15\nZ (1-)\t700:9/3;\n") }) {
        entry_ref ref;
        ASSERT_EQ(get_ref_for_path(path.c_str(), &ref), B_OK);
        dropped.AddRef("refs", &ref);
    }
    window->LoadResults(&dropped);
    EXPECT_EQ(Find("line").text, "2 machines added; other.txt is no results file, and 1 more");
    Close();
    Open();
    Run();
    ASSERT_TRUE(screen::Click("save"));
    ASSERT_TRUE(screen::BecomesActive("Information"));
    screen::Key("Return");
    ASSERT_TRUE(screen::BecomesActive("Tarvex Comparisons"));
    std::filesystem::rename(folder / "Tarvex.compare", folder / "table");
    std::filesystem::create_directory(folder / "Tarvex.compare");
    screen::ClickAt(PictureOf(1) + BPoint(30, 0));
    screen::Key("s");
    EXPECT_TRUE(Shows("line", "Could not write Tarvex.compare: Is a directory"));
    const std::string table = ReadFile(folder / "table");
    EXPECT_TRUE(table.ends_with("50.0\t\nZ (1-)\t\t3.0\t\nOther (1-y)\t\t200.0\t\n")) << table;
    screen::Key("alt+F4");
    EXPECT_SOON(closed == 1);
}
