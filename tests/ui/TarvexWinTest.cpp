#include "ui/TarvexWin.h"

#include "engine/ThisBuild.h"
#include "results/ProbeMemory.h"
#include "sysinfo/LibSysInfo.h"
#include "tests/kits/kernel/MachineTree.h"
#include "tests/support/NoThreads.h"
#include "tests/support/SessionService.h"
#include "tests/support/Steps.h"
#include "tests/support/Test.h"
#include "tests/support/WithLock.h"
#include "toolkit/MessageBoxes.h"
#include "ui/RunEstimate.h"
#include "ui/UnsavedRun.h"

#include <Application.h>
#include <MachineRun.h>
#include <MenuBar.h>
#include <MenuItem.h>
#include <Message.h>
#include <StatusBar.h>

namespace {

using screen::Find;
using screen::Shows;

const int32 kNbrCpus = LibSysInfo().cpuCount;

// Keeps what the window showed at each status message.
class RecordingWin : public TarvexWin {
public:
    RecordingWin() : TarvexWin(false) { }

    void MessageReceived(BMessage* message) override
    {
        TarvexWin::MessageReceived(message);
        if (message->what != 'BmkS')
            return;
        EstimateTime(); // waits for the end
        statuses.push_back(Find("timebox").text + ": " + Find("est_time").text);
        EXPECT_TRUE(Find("progress").exists);
        EXPECT_GE(find_thread("LoadCursor"), 0);
        const float done = Progress().CurrentValue();
        EXPECT_TRUE(done > 0 && done < 1) << done;
        if (atStatus)
            atStatus();
        StartTest(); // one run at a time: nothing must happen
        EXPECT_FALSE(KeyMenuBar()->FindItem("Test")->IsEnabled());
    }

    BStatusBar& Progress() { return *dynamic_cast<BStatusBar*>(FindView("progress")); }

    std::vector<std::string> statuses;
    std::function<void()> atStatus;
};

// Keeps the results of another machine, of seven processors.
void KeepOlderRun()
{
    Results run(true);
    run.description = "PC (7-x)";
    Metric* metric = run.NewTest("Memory", 195);
    metric->Index(200);
    for (int count = 7; count > 0; count--)
        metric->Time(0.5f);
    UnsavedRun().Keep(run);
}

class TarvexWinTest : public testing::Test {
protected:
    void SetUp() override
    {
        window = new RecordingWin;
        window->Show();
        ASSERT_TRUE(screen::BecomesActive("Tarvex"));
    }
    // A run that is under way ends with its window.
    void TearDown() override
    {
        LibCloseAlerts();
        CloseWindow();
        EXPECT_LT(find_thread("benchmark"), 0);
        EXPECT_LT(find_thread("LoadCursor"), 0);
    }

    void CloseWindow()
    {
        if (!window || !window->Lock())
            return;
        EXPECT_TRUE(window->QuitRequested());
        window->Quit();
        window = nullptr;
    }
    void Restart()
    {
        CloseWindow();
        SetUp();
    }
    bool IsEnabled(const char* item)
    {
        return WithLock(window, [&] { return window->KeyMenuBar()->FindItem(item)->IsEnabled(); });
    }
    bool TestIsEnabled() { return IsEnabled("Test"); }

    BApplication app { "application/x-vnd.Quorvane.WinTest" };
    RecordingWin* window = nullptr;
};

} // namespace

TEST_F(TarvexWinTest, EveryTickChangesEstimateAndTestItem)
{
    EXPECT_TRUE(screen::ShowsTree("Tarvex", "ui/Tarvex"));
    screen::Key("ctrl+t"); // nothing to test
    RunEstimate estimate;
    estimate.nbrCpus = kNbrCpus;
    std::string all;
    for (const bool isOn : { true, false }) {
        for (size_t group = 0; group < kNbrTestGroups; group++) {
            if (kTestGroups[group].box == GroupBox::kNone)
                continue;
            screen::Click(kTestGroups[group].viewName);
            estimate.selected[group] = isOn;
            EXPECT_TRUE(Shows("est_time", estimate.Text().operator const char*())) << group;
            EXPECT_EQ(TestIsEnabled(), estimate.Seconds() > 0);
        }
        all = isOn ? Find("est_time").text : all;
    }
    screen::Key("ctrl+a");
    EXPECT_TRUE(Shows("est_time", all));
    screen::Click("disklifecycle");
    EXPECT_SOON(Find("est_time").text != all);
    screen::ClickMenu({ "Benchmark", "All" });
    EXPECT_TRUE(Shows("est_time", all));
}

TEST_F(TarvexWinTest, AsksBeforeASecondRunOnTheMachineWhichTheDefaultDoesNotStart)
{
    BMachineRun other;
    ASSERT_EQ(other.Begin(), B_OK);
    Follow("ui/SecondRun.steps",
        { { "told", [](const Row&) {
               const std::string text = Find("_tv_").text;
               EXPECT_TRUE(text.starts_with("Another run is under way on this machine, by "))
                   << text;
               EXPECT_NE(
                   text.find(" (process " + std::to_string(getpid()) + ") since "), text.npos);
           } } });
}

TEST_F(TarvexWinTest, WithoutAThreadForTheRunTheWindowIsIdleAgain)
{
    const auto startTest = [this] {
        testing::internal::CaptureStderr();
        window->StartTest();
        return testing::internal::GetCapturedStderr();
    };
    screen::Click("cpumemory");
    ASSERT_SOON(TestIsEnabled());
    {
        const NoThreads noThreads;
        const std::string errors = startTest(); // each alert tells there what it has to tell
        EXPECT_NE(errors.find("\nWhile the test is being"), std::string::npos) << errors;
        EXPECT_NE(errors.find("\nThe test could not be started: "), std::string::npos) << errors;
    }
    EXPECT_EQ(Find("timebox").text, "Estimated Test Time");
    EXPECT_TRUE(TestIsEnabled());
    screen::Key("ctrl+t");
    EXPECT_SOON(find_thread("benchmark") >= B_OK);
}

TEST_F(TarvexWinTest, RunsShowTheirStatusThenTheResultsAndWarnOnce)
{
    // No core is that fast, so all spans were shared.
    KeepProbe(ProbeKey(ReadMachineDetails(), ThisBuild()), { 2e-6, kUnknownBest.clock });
    KeepOlderRun();
    Restart();
    Follow("ui/Warned.steps");
    screen::Key("Return");
    ASSERT_TRUE(screen::BecomesActive("Results", 120));
    EXPECT_LT(find_thread("LoadCursor"), 0);
    EXPECT_EQ(BMachineRun().Begin(), B_OK);

    std::vector<std::string> expected;
    const std::string all = "/" + std::to_string(kNbrCpus) + ")";
    for (int32 cpu = kNbrCpus; cpu > 0; cpu--) {
        expected.push_back("Status: Testing Strings (cpu " + std::to_string(cpu) + all);
        expected.push_back("Status: Testing Memory (cpu " + std::to_string(cpu) + all);
    }
    EXPECT_EQ(window->statuses, expected);
    EXPECT_EQ(Find("timebox").text, "Estimated Test Time");
    EXPECT_EQ(Find("est_time").text, "");
    EXPECT_TRUE(TestIsEnabled());
    const std::string spans = std::to_string(3 * kNbrCpus); // of three tests
    const std::string shared = spans + " of " + spans + " spans were shared";
    EXPECT_TRUE(Shows("status", shared)) << Find("status").text;

    // Closed by whatever means, the results come back when asked for, and with the next run, which
    // warns no more.
    for (const char* key : { "Escape", "ctrl+w", "" }) {
        for (const char* back : { "ctrl+r", "ctrl+t" }) {
            if (key[0])
                screen::Key(key);
            else
                screen::Click("cancel");
            EXPECT_SOON(!Find("list").exists) << key;
            screen::ClickAt(Find("est_time").frame.LeftTop());
            ASSERT_TRUE(screen::BecomesActive("Tarvex"));
            screen::Key(back);
            ASSERT_TRUE(screen::BecomesActive("Results", 120));
            EXPECT_FALSE(Find("cpus7").exists) << "the older run has gone";
        }
    }
    Restart();
    EXPECT_TRUE(IsEnabled("Results")) << "kept as nobody has saved them";
}

TEST_F(TarvexWinTest, KeepsTheMachineAwakeAndTellsAnAbsentUserOfTheEnd)
{
    SessionService session({ "org.freedesktop.ScreenSaver", "org.freedesktop.Notifications" });
    const ThisMachine tree; // of one processor
    const auto sleep = [&](int times) {
        tree.Write("sys/power/suspend_stats/success", std::to_string(times) + "\n");
    };
    sleep(3);
    std::vector<std::string> left;
    window->atStatus = [&] {
        const BStatusBar& bar = window->Progress();
        left.push_back(bar.ToolTip() + (bar.MaxValue() == 1 ? std::string(" of 1") : ""));
        sleep(4);
        // While this is handled the end of the run waits.
        EXPECT_EQ(system("wmctrl -k on"), 0);
        EXPECT_SOON(!screen::IsActive("Tarvex"));
    };
    EXPECT_FALSE(Find("progress").exists);
    Follow("ui/Warned.steps");
    EXPECT_EQ(session.log.Now(), Entries()) << "nothing runs yet";
    screen::Key("Return");
    ASSERT_SOON(Find("list").exists);
    EXPECT_SOON(!Find("progress").exists);
    ASSERT_EQ(left.size(), 2u);
    EXPECT_EQ(left, std::vector<std::string>(2, "0:01 left of 1"));
    const std::string remark = Find("status").text;
    const std::regex expected("(None|\\d) of 3 spans (was|were) shared; the machine slept once");
    EXPECT_TRUE(std::regex_match(remark, expected)) << remark;
    const Entries entries = session.log.WaitFor(3);
    EXPECT_TRUE(entries[0].ends_with(".Inhibit(Tarvex, A run of Tarvex)")) << entries[0];
    EXPECT_EQ(entries[1], "gone") << "with the run";
    EXPECT_TRUE(entries[2].ends_with(", The test has ended, " + remark + ", [], [], -1)"));
}

TEST_F(TarvexWinTest, OffersTheUnsavedResultsOfTheLastStartUntilTheyAreSaved)
{
    EXPECT_FALSE(IsEnabled("Results"));
    const ThisMachine tree; // without devices, and so without questions about them
    KeepOlderRun();
    const auto showsTime = [](const Row&) {
        const std::string time = ReadFile(DataHome() / "tarvex/unsaved").substr(0, 16);
        EXPECT_TRUE(Shows("status", "Not saved yet: the run of " + time));
    };
    Follow("ui/Unsaved.steps",
        { { "restart", [this](const Row&) { Restart(); } },
            { "no files", [this](const Row&) { window->PostMessage(B_REFS_RECEIVED); } },
            { "of the run", showsTime } },
        { { "FOLDER", DataHome().Path() } });
    EXPECT_TRUE(std::filesystem::exists(DataHome() / "mine.zip"));
    Restart();
    EXPECT_FALSE(IsEnabled("Results"));
}

TEST_F(TarvexWinTest, TheGraphicsTestsAskForTheirScreenFirst)
{
    Follow("ui/Graphics.steps");
    EXPECT_TRUE(window->statuses.empty());
    EXPECT_LT(find_thread("LoadCursor"), 0);
}
