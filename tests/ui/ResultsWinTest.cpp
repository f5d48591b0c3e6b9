#include "ui/ResultsWin.h"

#include "sysinfo/LibSysInfo.h"
#include "tests/kits/kernel/PciTree.h"
#include "tests/support/Steps.h"
#include "tests/support/Test.h"
#include "tests/support/WithLock.h"
#include "ui/ResultsMail.h"
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
    const BPoint row = Find("list").frame.LeftTop();
    const auto contrast = [&](float left, float top, float right, float bottom) {
        return screen::ContrastIn(BRect(row + BPoint(left, top), row + BPoint(right, bottom)));
    };
    for (const float column : { 5, 190, 290, 345, 400 })
        EXPECT_GT(contrast(column + 12, 13, column + 20, 25), 0) << column;
    // What is too wide keeps its distance from the next column.
    EXPECT_EQ(contrast(186, 0, 189, 12) + contrast(396, 0, 399, 12), 0);
    // Without descenders letters end above the base line.
    EXPECT_GT(contrast(5, 9, 180, 9), 0);
    EXPECT_EQ(contrast(5, 10, 180, 12), 0);
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
    WithLock(window, [&] { window->Update(run, false); });
    EXPECT_SOON(screen::Lines("list") == "Memory, KIPS, 200.0, 0.0, 100.0\n");
    const std::string copied = screen::Copied("text/plain");
    testing::internal::CaptureStderr();
    Follow("ui/Comparing.steps",
        { { "selected", [](const Row& line) {
               EXPECT_SOON(screen::Lines("DrawView").ends_with("\nSelected: " + line[1] + "\n"));
           } } });
    EXPECT_NE(testing::internal::GetCapturedStderr().find("time 2: 0.000 1: 0.500\n"), rows.npos);
    EXPECT_FALSE(Find("save", "Tarvex Comparisons").exists);
    EXPECT_EQ(screen::Copied("text/plain"), copied);
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

TEST(ResultsWin, RowsHaveRoomForEightRates)
{
    ResultItem item("A test");
    for (const int slot : { -1, 0, 7, 8 })
        item.Rate(slot, 2);
    EXPECT_EQ(std::tuple(item.Quantity(), item.Rate(0), item.Rate(7)), std::tuple(2, 2, 2));
    item.Quantity(9);
    EXPECT_EQ(item.Quantity(), 9);
}

TEST(ResultsWin, SaysWhatBecameOfAFile)
{
    const TempFolder folder;
    const std::string file = folder / "mine";
    const std::tuple<size_t, Package, const char*> rows[] = {
        { 1024, { Packed::kZip, 1, "" }, "1 file, 1 KB" },
        { 1025, { Packed::kTar, 2, "zip failed" }, "2 files, 2 KB, not compressed: zip failed" },
        { 1 << 20, { Packed::kNoZip, 2, "none" }, "2 files, 1024 KB, not compressed: none" },
        { 0, { .why = "why" }, "not packed: why" },
    };
    for (const auto& [size, package, text] : rows) {
        WriteFile(file, std::string(size, 'x'));
        EXPECT_EQ(SavedText(file.c_str(), package), "Saved: " + file + " (" + text + ")");
    }
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
    Follow("ui/TypedNames.steps",
        {
            { "compare", [&](const Row&) { WithLock(window, [&] { window->CompareResults(); }); } },
            { "front",
                [](const Row& row) { EXPECT_EQ(system(("wmctrl -a " + row[1]).c_str()), 0); } },
            { "device",
                [](const Row& row) {
                    EXPECT_SOON(screen::Lines("DrawView").find(row[1]) != std::string::npos);
                } },
        });
}

TEST(ResultsWin, SaysWhatBecameOfEachFileAndMail)
{
    const ThisMachine tree; // without devices, and so without questions about them
    const TempFolder folder;
    const std::string path = getenv("PATH");
    setenv("PATH", (folder.Path() + ":" + path).c_str(), 1);
    const BApplication app("application/x-vnd.Quorvane.ResultsTest");
    Results run(true);
    AddMetric(run, "Memory", { 1 });
    ResultsWin* window = new ResultsWin(1);
    window->Update(run, false);
    window->Show();
    const auto said = [&] { // all of it, where the line has no room
        const std::string tip =
            WithLock(window, [&] { return window->FindView("status")->ToolTip(); });
        return tip.empty() ? Find("status").text : tip;
    };
    testing::internal::CaptureStderr();
    Follow("ui/Mailing.steps",
        {
            { "mailer",
                [&](const Row& row) {
                    WriteFile(folder / "sendmail", "#!/bin/sh\n" + row[1]);
                    chmod((folder / "sendmail").c_str(), 0755);
                } },
            { "answer", [&](const Row&) { window->PostMessage(TarvexAlert::kMsgEmail); } },
            { "said", [&](const Row& row) { EXPECT_SOON(said() == row[1]) << said(); } },
        },
        { { "FOLDER", folder.Path() } });
    EXPECT_NE(testing::internal::GetCapturedStderr().find("The mail with <> was not sent\n"),
        std::string::npos);
    EXPECT_NE(
        ReadFile(folder / "sendmail.mail").find("\nResults for : a box.\n"), std::string::npos);
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
    const auto of = [&](const char* processors) {
        return std::regex_replace(text, std::regex("1-x"), processors);
    };
    WriteFile(file, of("8-x"));
    EXPECT_NE(UnsavedRun().Read(), nullptr);
    for (const std::string& damaged : { std::string(), text.substr(0, 16), text.substr(0, 17),
             text.substr(0, text.find('\t')), of("0-x"), of("9-x"), "x" + text }) {
        WriteFile(file, damaged);
        UnsavedRun unread;
        EXPECT_EQ(unread.Read(), nullptr) << damaged;
        unread.Forget();
        EXPECT_EQ(ReadFile(file), damaged.size() > 17 && damaged[0] == '2' ? "" : damaged);
    }
    WriteFile(file, text);
    other.Forget();
    EXPECT_EQ(UnsavedRun().Read(), nullptr);
    std::filesystem::remove_all(DataHome() / "tarvex");
    WriteFile(DataHome() / "tarvex", "in the way");
    testing::internal::CaptureStderr();
    one.Keep(run);
    EXPECT_TRUE(testing::internal::GetCapturedStderr().ends_with(
        "The results could not be kept for the next start\n"));
    std::filesystem::remove(DataHome() / "tarvex");
}
