#include "ui/ResultsWin.h"

#include "sysinfo/LibSysInfo.h"
#include "tests/kits/kernel/PciTree.h"
#include "tests/support/ScreenDriver.h"
#include "tests/support/Test.h"
#include "tests/support/WithLock.h"
#include "ui/UnsavedRun.h"

#include <Application.h>
#include <MachineDetails.h>

namespace {

using screen::Find;

void AddMetric(Results& run, const char* name, std::initializer_list<float> seconds)
{
    Metric* metric = run.NewTest(name, 100);
    metric->Units("KIPS");
    for (const float time : seconds)
        metric->Time(time);
}

} // namespace

TEST(ResultsWin, ShowsTheLastRunOnly)
{
    const BApplication app("application/x-vnd.Quorvane.ResultsTest");
    Results run(true);
    AddMetric(run, "A test whose name has no room", { 2, 4e-9f });
    AddMetric(run, "Memory", { 0.5f, 0, 1 });
    ResultsWin* window = new ResultsWin(3);
    window->Update(run, false);
    window->Show();
    ASSERT_TRUE(screen::BecomesActive("Results"));
    screen::ResizeWindow("Results", BPoint(99, 99)); // as small as it can be
    EXPECT_TRUE(screen::ShowsTree(
        "Results", "ui/Results", { { "MACHINE", LibMachineText(ReadMachineDetails()) } }));
    // What is too wide keeps its distance from the next column.
    const BPoint row = Find("list").frame.LeftTop();
    for (const float column : { 190, 400 })
        EXPECT_EQ(
            screen::ContrastIn(BRect(row + BPoint(column - 4, 0), row + BPoint(column - 1, 12))), 0)
            << column;
    BMessage noFiles;
    WithLock(window, [&] { window->CompareFiles(&noFiles, true); });
    ASSERT_TRUE(screen::BecomesActive("Tarvex Comparisons"));
    EXPECT_TRUE(Find("save", "Tarvex Comparisons").exists);
    EXPECT_EQ(screen::Lines("DrawView").find("Selected"), std::string::npos);
    const std::string rows = screen::Lines("list");
    run.First();
    run.Remove();
    EXPECT_EQ(screen::Lines("list"), rows) << "the window shows a copy";
    run.description = "Another one (1-x)";
    WithLock(window, [&] { window->Update(run, true); });
    EXPECT_SOON(screen::Lines("list") == "Memory, KIPS, 200.0, 0.0, 100.0\n");
    const auto isCompared = [] {
        return screen::BecomesActive("Tarvex Comparisons") && screen::WaitFor([] {
            return screen::Lines("DrawView").ends_with("\nSelected: Another one (1-x)\n");
        });
    };
    EXPECT_TRUE(isCompared()) << "the open comparison is of the new run";
    screen::Key("Escape");
    ASSERT_TRUE(screen::BecomesActive("Results"));
    EXPECT_TRUE(screen::Click("compare") && isCompared());
    screen::Key("Escape");
    ASSERT_TRUE(screen::BecomesActive("Results"));
    EXPECT_STREQ(WithLock(window, [&] { return window->FindView("bgview")->ToolTip(); }), "")
        << "nobody knows more of that machine";
    screen::ClickAt(row + BPoint(9, 9));
    EXPECT_SOON(screen::PixelAt(row + BPoint(1, 1)).green == 0) << "selected";
    screen::Key("ctrl+c");
    EXPECT_SOON(screen::Copied("text/plain")
        == run.description.operator const char*()
            + std::string("\nTest    Units  3 CPU  2 CPU  1 CPU\n"
                          "Memory  KIPS   200.0      -  100.0\n"));
}

TEST(ResultsWin, KeepsTypedNamesForTheNextSaveAndTakesEveryOtherAnswerForNo)
{
    std::filesystem::remove_all(DataHome() / "tarvex");
    const ThisMachine tree;
    AddPciFunction(tree, "0000:00:02.0", PciConfig(0x1002, 0x0abc, 0x030000));
    const BApplication app("application/x-vnd.Quorvane.ResultsTest");
    Results run(true);
    AddMetric(run, "Memory", { 1 });
    run.FillTheseDevices();
    ResultsWin* window = new ResultsWin(1);
    window->Update(run, false);
    window->Show();
    const auto shownDevices = [window] {
        WithLock(window, [window] { window->KeepUnsaved(); });
        const std::string kept = ReadFile(DataHome() / "tarvex/unsaved");
        const size_t start = kept.find("\t3:") + 1; // not in the time of day
        return kept.substr(start, kept.rfind('\t') - start);
    };
    const auto isActive = [](const char* title) { return screen::BecomesActive(title); };
    const char question[] = ""; // has no title
    for (const char* key : { "Escape", "alt+F4", "n" }) {
        ASSERT_TRUE(isActive("Results"));
        screen::Key("Return");
        ASSERT_TRUE(isActive(question));
        screen::Key(key);
    }
    ASSERT_TRUE(isActive("Results"));
    std::string typed = "Unknown";
    for (const char* text : { "?one", "?another", "?third" }) {
        screen::Key("Return");
        ASSERT_TRUE(isActive(question));
        screen::Key("y");
        ASSERT_TRUE(isActive("Unknown Devices"));
        EXPECT_EQ(Find("device_1-1_0xABC").text, typed);
        screen::Type(typed = text);
        if (typed != "?third")
            screen::Key("ctrl+r"); // puts the names into the results and takes them out again
        screen::Key("Return");
        ASSERT_TRUE(isActive("Save As"));
        EXPECT_EQ(shownDevices(),
            "3:ATI Technologies, " + std::string(typed == "?one" ? "?one" : "Unknown"));
        screen::Key("Escape");
        ASSERT_TRUE(isActive("Results"));
    }
}

TEST(ResultsWin, SaysWhatBecameOfEachFileAndMail)
{
    const ThisMachine tree; // without devices, and so without questions about them
    const TempFolder folder;
    const std::string longFolder = folder / std::string(80, 'x');
    std::filesystem::create_directory(longFolder);
    const std::string path = getenv("PATH");
    setenv("PATH", (folder.Path() + ":" + path).c_str(), 1);
    const auto mailer = [&](const std::string& commands) {
        WriteFile(folder / "sendmail", "#!/bin/sh\n" + commands);
        std::filesystem::permissions(folder / "sendmail", std::filesystem::perms::all);
    };
    const BApplication app("application/x-vnd.Quorvane.ResultsTest");
    Results run(true);
    AddMetric(run, "Memory", { 1 });
    ResultsWin* window = new ResultsWin(1);
    window->Update(run, false);
    window->Show();
    const auto save = [&](const std::string& file) {
        ASSERT_TRUE(screen::BecomesActive("Results"));
        screen::Key("Return");
        ASSERT_TRUE(screen::BecomesActive(""));
        EXPECT_TRUE(screen::ShowsTree("", "ui/Question"));
        screen::Key("y");
        ASSERT_TRUE(screen::BecomesActive("Save As"));
        EXPECT_TRUE(screen::Shows("fileNameEdit", "Tarvex.results"));
        screen::Type(file);
        screen::Key("Return");
    };
    const auto mail = [] {
        ASSERT_TRUE(screen::BecomesActive("alert"));
        EXPECT_TRUE(screen::ShowsTree("alert", "ui/Alert"));
        screen::Type("a box");
        EXPECT_TRUE(screen::Shows("config", "a box"));
        EXPECT_TRUE(screen::Click("_b1_", "alert"));
    };
    save("/sys/mine"); // where nobody, not even root, may make a file
    EXPECT_TRUE(screen::Shows("status", "Could not write /sys/mine: permission denied"));
    EXPECT_FALSE(WithLock(window, [] { return Find("config").exists; }));

    mailer("cat > \"$0.mail\"\n");
    save(folder / "mine");
    EXPECT_SOON(Find("status").text.ends_with("/mine.zip (1 file, 1 KB)"));
    mail();
    EXPECT_TRUE(screen::Shows("status", "Mailed to support@tarvex.example"));
    EXPECT_NE(
        ReadFile(folder / "sendmail.mail").find("\nResults for : a box.\n"), std::string::npos);

    mailer("echo 'no such account' >&2; exit 78\n");
    save(longFolder + "/mine");
    const std::string all = "Saved: " + longFolder + "/mine.zip (1 file, 1 KB)";
    EXPECT_SOON(WithLock(window, [&] { return window->FindView("status")->ToolTip() == all; }));
    const std::string shown = Find("status").text;
    EXPECT_TRUE(shown.starts_with("Saved: " + folder.Path().substr(0, 4))) << shown;
    EXPECT_TRUE(shown.ends_with("/mine.zip (1 file, 1 KB)")) << shown;
    EXPECT_NE(shown.find("..."), shown.npos);
    mail();
    EXPECT_TRUE(screen::Shows("status", "The mailer refused: no such account"));
    setenv("PATH", path.c_str(), 1);
}

TEST(UnsavedRun, IsReadAsFarAsItIsWholeAndForgottenByWhoKeptIt)
{
    const std::string file = DataHome() / "tarvex/unsaved";
    Results run(true);
    run.description = "PC (1-x)";
    AddMetric(run, "Memory", { 1 });
    run.First()->Index(200);
    UnsavedRun one, other;
    one.Keep(run);
    AddMetric(run, "Savage", { 1 });
    run.First(), run.Next()->Index(300);
    other.Keep(run);
    one.Forget();
    ASSERT_NE(one.Read(), nullptr);
    EXPECT_EQ(one.Read()->Size(), 2);
    EXPECT_STREQ(one.Read()->First()->units, "MB/sec");
    const std::string text = ReadFile(file);
    for (const std::string& damaged : { std::string(), text.substr(0, 16), text.substr(0, 17),
             text.substr(0, text.find('\t')), "x" + text }) {
        WriteFile(file, damaged);
        UnsavedRun unread;
        EXPECT_EQ(unread.Read(), nullptr) << damaged;
        unread.Forget();
        EXPECT_EQ(ReadFile(file), damaged.size() > 17 && damaged[0] == '2' ? "" : damaged);
    }
    WriteFile(file, text);
    other.Forget();
    EXPECT_EQ(UnsavedRun().Read(), nullptr);
}
