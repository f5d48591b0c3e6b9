// The comparison as a user sees it: real clicks, the screen's pixels, the store's real file.
#include "ui/CompareWin.h"

#include "results/ComparisonChart.h"
#include "tests/kits/app/TestLooper.h"
#include "tests/results/ComparedRun.h"
#include "tests/results/MadeRuns.h"
#include "tests/support/Steps.h"
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
    // At the place in a view that a step says.
    static void ClickIn(const char* view, const Row& row)
    {
        const float x = std::stof(row.at(1)), y = std::stof(row.at(2));
        screen::ClickAt(Find(view).frame.LeftTop() + BPoint(x, y));
    }
    // The colour at a value of the scale 0 to maxScale, in the middle of a row's bar.
    uint32 BarAt(int row, double value, double maxScale)
    {
        const BRect chart = Find("DrawView").frame;
        const BPoint place(320 + static_cast<float>((chart.Width() - 320) * value / maxScale), 0);
        const BPoint bar = PictureOf(row) - BPoint(9, 0) + place;
        return screen::PixelsIn(BRect(bar, bar))[0];
    }
    BView& Chart() { return *window->FindView("DrawView"); }
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
    // The first and the last pixel in a strip that is not as its end; "-": all are.
    static std::string Extent(BRect strip)
    {
        const std::vector<uint32> pixels = screen::PixelsIn(strip);
        const auto isOther = [&](uint32 pixel) { return pixel != pixels.back(); };
        const auto first = std::find_if(pixels.begin(), pixels.end(), isOther);
        const auto last = std::find_if(pixels.rbegin(), pixels.rend(), isOther);
        return first == pixels.end() ? "-"
                                     : std::to_string(first - pixels.begin()) + " to "
                + std::to_string(pixels.rend() - last - 1);
    }
    // Beside the usual steps: the run is given, machines are of these files, the window is opened
    // anew; rows of the chart are clicked beside their picture or looked at, whole. In the legend
    // the line below the entry for the keys is looked at, in the chart the frame around the row.
    void FollowSteps(const std::string& file)
    {
        const auto beside = [this](const Row& row) {
            return PictureOf(std::stoi(row[1])) + BPoint(30, 0);
        };
        Follow(file,
            {
                { "run", [this](const Row&) { Run(); } },
                { "load", [this](const Row& row) { window->LoadResults(row[1].c_str()); } },
                { "reopen", [this](const Row&) { Close(), Open(); } },
                { "row", [=](const Row& row) { screen::ClickAt(beside(row)); } },
                { "picture",
                    [this](const Row& row) { screen::ClickAt(PictureOf(std::stoi(row[1]))); } },
                { "menu of", [=](const Row& row) { screen::ClickAt(beside(row), 3); } },
                { "point at", [=](const Row& row) { screen::MoveTo(beside(row)); } },
                { "legend", [](const Row& row) { ClickIn("legend", row); } },
                { "swatch", [](const Row& row) { ClickIn("swatches", row); } },
                { "color",
                    [this](const Row& row) {
                        const uint32 color = std::stoul(row[1], nullptr, 16);
                        const BPoint entry = Find("legend").frame.LeftTop() + BPoint(71, 8);
                        EXPECT_SOON(BarAt(0, 390, 410) == color
                            && screen::PixelsIn(BRect(entry, entry))[0] == color);
                    } },
                { "strip",
                    [](const Row& row) {
                        const BRect frame = Find(row[1]).frame;
                        const BRect strip(row[1] == "legend" ? frame.LeftBottom()
                                                             : frame.RightTop() + BPoint(0, 15),
                            frame.RightBottom());
                        EXPECT_SOON(Extent(strip) == row[2]) << Extent(strip);
                    } },
                { "usual tip",
                    [this](const Row& row) {
                        WithLock(window, [&] { Chart().SetToolTip(row[1].c_str()); });
                    } },
                { "tip at",
                    [this](const Row& row) {
                        EXPECT_EQ(row.at(3), WithLock(window, [&] {
                            Chart().MouseMoved(
                                { std::stof(row[1]), std::stof(row[2]) }, 0, nullptr);
                            return std::string(Chart().ToolTip());
                        }));
                    } },
                { "rows", [](const Row& row) { ExpectRows(Joined(row, 1)); } },
            },
            { { "FOLDER", folder.Path() } });
    }

    const TempFolder folder;
    BApplication app { "application/x-vnd.Quorvane.CompareTest" };
    std::atomic<int> closed = 0;
    TestLooper* target = new TestLooper(
        [this](TestLooper&, BMessage* message) { closed += message->what == 'cmpq'; });
    CompareWin* window = nullptr;
    Results run { true };
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

    FollowSteps("ui/Choosing.steps");

    EXPECT_SOON(BarEndsAt(0, 50, 60, 0)); // now black
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
    auto* bar = WithLock(window, [&] { return Chart().ScrollBar(B_VERTICAL); });
    const std::pair<const char*, float> rows[] = { { "Down", 17 }, { "Next", 94 }, { "Up", 77 },
        { "End", 129 }, { "Down", 129 }, { "Prior", 52 }, { "Down", 69 }, { "Home", 0 } };
    for (const auto& row : rows) {
        screen::Key(row.first);
        EXPECT_SOON(WithLock(window, [&] { return bar->Value(); }) == row.second) << row.first;
    }
}

TEST_F(CompareWinTest, TheMenuOfAMachineForgetsAndOrdersWhatTipsTellOf)
{
    MachineFile(folder);
    File("more", MadeResults("<b>A</b> (1-)", "700:90/1.0;"));
    FollowSteps("ui/Forgetting.steps"); // the menu stays open while the window goes
}

TEST_F(CompareWinTest, ATipTellsTheUnitAtTheCaption)
{
    MachineFile(folder);
    FollowSteps("ui/Tips.steps");
}

TEST_F(CompareWinTest, TheChartIsCopiedAndSavedAsAPicture)
{
    MachineFile(folder);
    FollowSteps("ui/Copying.steps");
    EXPECT_EQ(screen::Copied("text/plain"),
        "Sieve (IPS), percent of This (2-x)\n"
        "Machine     2 CPU  1 CPU  Percent\n"
        "This (2-x)  400.0  100.0    100.0\n");
    EXPECT_TRUE(screen::Copied("image/png").starts_with("\x89PNG"));
    EXPECT_NE(screen::Copied("image/svg+xml").find("This (2-x)"), std::string::npos);
    FollowSteps("ui/SavingPictures.steps");
    EXPECT_NE(ReadFile(folder / "chart.svg").find("This (2-x)"), std::string::npos);
}

TEST_F(CompareWinTest, KeysAndClicksChooseColoursFromALegendThatCanBeRead)
{
    Run();
    const BPoint text = Find("legend").frame.LeftTop() + BPoint(20, 2);
    EXPECT_SOON(screen::ContrastIn(BRect(text, text + BPoint(35, 14))) > 100);
    FollowSteps("ui/Legend.steps");
    const BRect swatches = Find("swatches").frame;
    EXPECT_EQ(swatches.LeftTop() - Find("bgview").frame.LeftTop(), BPoint(198, 112));
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
    FollowSteps("ui/Colors.steps");
}

TEST_F(CompareWinTest, FilesDraggedFromAnotherProgramAreShown)
{
    Run();
    DragFromAnotherProgram(
        MachineFile(folder), Find("DrawView").frame.LeftTop() + BPoint(200, 150));
    ExpectRows("This (2-x), 2 CPU 400.0, 1 CPU 100.0\nOther (1-y), 1 CPU 200.0\n"
               "Selected: This (2-x)\n");
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
    FollowSteps("ui/Dropping.steps");
    std::filesystem::rename(folder / "Tarvex.compare", folder / "table");
    std::filesystem::create_directory(folder / "Tarvex.compare");
    FollowSteps("ui/NoTable.steps");
    const std::string table = ReadFile(folder / "table");
    EXPECT_TRUE(table.ends_with("50.0\t\nZ (1-)\t\t3.0\t\nOther (1-y)\t\t200.0\t\n")) << table;
    screen::Key("alt+F4");
    EXPECT_SOON(closed == 1);
}
