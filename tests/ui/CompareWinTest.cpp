// The comparison as a user sees it: real clicks, the screen's pixels, the store's real file.
#include "ui/CompareWin.h"

#include "results/Results.h"
#include "tests/support/ScreenDriver.h"
#include "tests/support/TempFolder.h"
#include "ui/CpuColor.h"

#include <Application.h>
#include <Entry.h>
#include <Message.h>

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using screen::Find;
using screen::PixelAt;
using screen::WaitFor;

constexpr rgb_color kWhite = { 255, 255, 255, 255 };

bool IsSame(rgb_color a, rgb_color b)
{
    return a.red == b.red && a.green == b.green && a.blue == b.blue;
}

// Counts the 'cmpq' that a closing window sends.
class Target : public BLooper {
public:
    void MessageReceived(BMessage* message) override { closed += message->what == 'cmpq'; }
    std::atomic<int> closed = 0;
};

// Another program that the user drags files from.
class DragSource {
public:
    explicit DragSource(const std::string& file) : fProgram(TARVEX_BUILD "/test_dragsource")
    {
        fProcess = fork();
        if (fProcess == 0) {
            execl(fProgram.c_str(), fProgram.c_str(), file.c_str(), nullptr);
            _exit(127);
        }
    }
    ~DragSource()
    {
        kill(fProcess, SIGKILL);
        waitpid(fProcess, nullptr, 0);
    }
    static void Drag(BPoint to)
    {
        const std::string x = std::to_string(int(to.x));
        const std::string y = std::to_string(int(to.y));
        const std::string command = "xdotool mousemove 60 690 mousedown 1 sleep 0.2 "
                                    "mousemove 90 660 sleep 0.1 mousemove 150 600 sleep 0.1 "
                                    "mousemove "
            + x + " " + y
            + " sleep 0.1 mousemove_relative 3 3 "
              "sleep 0.3 mouseup 1";
        EXPECT_EQ(system(command.c_str()), 0);
    }
    // Whether its window is there, at (20, 650).
    static bool IsShown()
    {
        return system("xdotool search --onlyvisible --name '^Files$' >/dev/null 2>&1") == 0;
    }

private:
    const std::string fProgram;
    pid_t fProcess;
};

class CompareWinTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (!screen::IsThere())
            GTEST_SKIP() << "no display";
        setenv("XDG_DATA_HOME", folder.Path().c_str(), 1);
        std::filesystem::current_path(folder.Path());
        target->Run();
        Open(true);
    }
    void TearDown() override
    {
        if (window)
            Close();
        std::filesystem::current_path("/");
    }

    void Open(bool allowSave)
    {
        window = new CompareWin(target, allowSave);
        window->Show();
        ASSERT_TRUE(WaitFor([] { return screen::IsActive("Tarvex Comparisons"); }));
    }
    void Close()
    {
        ASSERT_TRUE(window->Lock());
        window->Quit();
        window = nullptr;
    }
    // A run whose sieve is as fast as 400, 100 with one processor, and memory 50.
    void Run()
    {
        run.Clear();
        run.description = "This (2-x)";
        run.nbrCpus = 2;
        Metric* sieve = run.NewTest("Sieve", 400);
        sieve->Units("IPS");
        sieve->Time(1);
        sieve->Time(4);
        run.NewTest("Memory", 50)->Time(1);
        window->SetResults(run);
    }
    std::string File(const std::string& name, const std::string& contents)
    {
        WriteFile(folder / name, contents);
        return folder / name;
    }
    std::string MachineFile()
    {
        const std::string record = "Other (1-y)\t-1:a screen\t6:Maker, Bridge\t700:200/1.0;";
        return File("other", "1.0\n" + std::to_string(record.size()) + "\n" + record + "\n");
    }
    // The colour at a value of the scale 0 to maxScale, in the middle of a row's bar.
    rgb_color BarAt(int row, double value, double maxScale)
    {
        const BRect chart = Find("DrawView").frame;
        const float x = chart.left + 320 + float((chart.Width() - 320) * value / maxScale);
        return PixelAt(BPoint(x, chart.top + 19 + 17 * float(row) + 8));
    }
    bool BarEndsAt(int row, double value, double maxScale, rgb_color color)
    {
        return IsSame(BarAt(row, value - maxScale / 100, maxScale), color)
            && !IsSame(BarAt(row, value + maxScale / 100, maxScale), color);
    }
    BPoint PictureOf(int row) const
    {
        return Find("DrawView").frame.LeftTop() + BPoint(9, 19 + 17 * float(row) + 8);
    }

    const TempFolder folder;
    BApplication app { "application/x-vnd.Quorvane.CompareTest" };
    Target* target = new Target;
    CompareWin* window = nullptr;
    Results run { true };
};

} // namespace

TEST_F(CompareWinTest, BarsAreAsLongAsTheirRatesAndTheUserChoosesTestPercentAndColour)
{
    Run();
    window->LoadResults(MachineFile().c_str());
    const rgb_color one = cpu_color[0];
    const rgb_color two = cpu_color[1];
    // 400 of the scale's 410.
    ASSERT_TRUE(WaitFor([&] { return BarEndsAt(1, 200, 410, one); }));
    EXPECT_TRUE(BarEndsAt(0, 400, 410, two));
    EXPECT_TRUE(BarEndsAt(0, 100, 410, one)) << "the shorter bar lies over the longer one";

    ASSERT_TRUE(screen::Click("ratio"));
    EXPECT_TRUE(WaitFor([&] { return BarEndsAt(0, 100, 110, two); })) << "the best is 100 percent";
    EXPECT_TRUE(BarEndsAt(1, 50, 110, one));
    // Beside the picture a click selects: the other machine is 100 percent then.
    screen::ClickAt(PictureOf(1) + BPoint(30, 0));
    EXPECT_TRUE(WaitFor([&] { return BarEndsAt(0, 200, 210, two); }));
    ASSERT_TRUE(screen::Click("ratio"));

    ASSERT_TRUE(screen::Click("choices"));
    ASSERT_TRUE(screen::ClickMenu({ "Memory" }));
    EXPECT_TRUE(WaitFor([&] { return BarEndsAt(0, 50, 60, one); }));
    EXPECT_TRUE(IsSame(BarAt(1, 1, 60), kWhite)) << "it has no such test";

    screen::ClickAt(Find("legend").frame.LeftTop() + BPoint(5, 8));
    ASSERT_TRUE(WaitFor([] { return screen::IsActive("Color of 1 CPU"); }));
    screen::ClickAt(Find("swatches").frame.LeftTop() + BPoint(2, 2)); // black
    EXPECT_TRUE(WaitFor([&] { return BarEndsAt(0, 50, 60, { 0, 0, 0, 255 }); }));
    EXPECT_FALSE(screen::IsActive("Color of 1 CPU"));
}

TEST_F(CompareWinTest, APictureOpensTheMachinesDevices)
{
    Run();
    window->LoadResults(MachineFile().c_str());
    ASSERT_TRUE(WaitFor([&] { return BarEndsAt(1, 200, 410, cpu_color[0]); }));
    window->LoadResults(MachineFile().c_str());
    ASSERT_TRUE(WaitFor([&] { return BarEndsAt(2, 200, 410, cpu_color[0]); }));
    screen::ClickAt(PictureOf(1));
    const auto isBelow = [&] { return !BarEndsAt(2, 200, 410, cpu_color[0]); };
    EXPECT_TRUE(WaitFor(isBelow)) << "two devices stand where the third machine was";
    screen::ClickAt(PictureOf(1));
    EXPECT_TRUE(WaitFor([&] { return BarEndsAt(2, 200, 410, cpu_color[0]); }));
}

TEST_F(CompareWinTest, FilesDraggedFromAnotherProgramAreShown)
{
    Run();
    const std::string file = MachineFile();
    const DragSource source(file);
    ASSERT_TRUE(WaitFor(DragSource::IsShown));
    ASSERT_TRUE(IsSame(BarAt(1, 199, 410), kWhite));
    DragSource::Drag(Find("DrawView").frame.LeftTop() + BPoint(200, 150));
    EXPECT_TRUE(WaitFor([&] { return BarEndsAt(1, 200, 410, cpu_color[0]); }));
}

TEST_F(CompareWinTest, EveryMachineButTheRunIsThereAgainAndTheTableIsWritten)
{
    Run();
    window->LoadResults(MachineFile().c_str());
    BMessage dropped(B_SIMPLE_DATA);
    for (const std::string& path : { File("note.html", "<html>"), File("other.txt", "1.0\n"),
             MachineFile(), File("again.txt", "1.0\n15\nZ (1-)\t700:9/3;\n") }) {
        entry_ref ref;
        ASSERT_EQ(get_ref_for_path(path.c_str(), &ref), B_OK);
        dropped.AddRef("refs", &ref);
    }
    window->LoadResults(&dropped);
    Close();
    Open(true);
    Run();
    ASSERT_TRUE(screen::Click("save"));
    ASSERT_TRUE(WaitFor([] { return screen::IsActive("Information"); }));
    screen::Key("Return");
    const std::string own = "This (2-x)\t400.0\t100.0\t\t50.0\t\n";
    EXPECT_EQ(ReadFile(folder / "Tarvex.compare"),
        "\tSieve\t\tMemory\t\t\n\t(IPS)\t\t()\t\t\n\t2 cpu\t1 cpu\t2 cpu\t1 cpu\t\n" + own + own
            + "Other (1-y)\t\t200.0\t\nZ (1-)\t\t3.0\t\nOther (1-y)\t\t200.0\t\n");
    ASSERT_TRUE(WaitFor([] { return screen::IsActive("Tarvex Comparisons"); }));
    screen::Key("alt+F4");
    EXPECT_TRUE(WaitFor([&] { return target->closed == 1; }));
}
