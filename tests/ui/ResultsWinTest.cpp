#include "ui/ResultsWin.h"

#include "tests/kits/kernel/PciTree.h"
#include "tests/support/ScreenDriver.h"
#include "ui/ResultItem.h"

#include <Application.h>
#include <ListView.h>

#include <gtest/gtest.h>

#include <tuple>

namespace {

using screen::Find;

void AddMetric(Results& run, const char* name, std::initializer_list<float> seconds)
{
    Metric* metric = run.NewTest(name, 100);
    metric->Units("KIPS");
    for (const float time : seconds)
        metric->Time(time);
}

// The list's rows, one text each.
std::vector<std::string> Rows(ResultsWin& window)
{
    const auto* list = dynamic_cast<BListView*>(window.FindView("list"));
    std::vector<std::string> rows;
    for (int32 i = 0; i < list->CountItems(); i++) {
        const auto* item = static_cast<ResultItem*>(list->ItemAt(i));
        std::string row = std::string(item->Description()) + " " + item->Units();
        for (int slot = 0; slot < item->Quantity(); slot++)
            row += " " + std::to_string(static_cast<int>(item->Rate(slot)));
        rows.push_back(row);
    }
    return rows;
}

} // namespace

TEST(ResultItem, HoldsTheFirstEightRatesOnly)
{
    ResultItem item("Strings");
    for (int slot = -1; slot < 20; slot++)
        item.Rate(slot, static_cast<float>(slot) + 0.5f);
    EXPECT_EQ(item.Quantity(), 8);
    EXPECT_EQ(item.Rate(0), 0.5f);
    EXPECT_EQ(item.Rate(7), 7.5f);
}

TEST(ResultsWin, ShowsTheLastRunOnly)
{
    const BApplication app("application/x-vnd.Quorvane.ResultsTest");
    Results run(true);
    AddMetric(run, "Strings Copy", { 2, 4 });
    AddMetric(run, "Memory", { 0.5f, 0, 1 });
    ResultsWin* window = new ResultsWin(3);
    window->Update(run, false);
    const std::vector<std::string> both { "Strings Copy KIPS 50 25", "Memory KIPS 200 0 100" };
    EXPECT_EQ(Rows(*window), both);

    run.First();
    run.Remove();
    EXPECT_EQ(Rows(*window), both) << "the window shows a copy";
    window->Update(run, true);
    EXPECT_EQ(Rows(*window), std::vector<std::string> { "Memory KIPS 200 0 100" });
    window->Show();
    ASSERT_TRUE(screen::BecomesActive("Results"));
    screen::Key("ctrl+c");
    EXPECT_SOON(screen::Copied("text/plain")
        == run.description.operator const char*()
            + std::string("\nTest    Units  3 CPU  2 CPU  1 CPU\n"
                          "Memory  KIPS   200.0      -  100.0\n"));
}

TEST(ResultsWin, TitlesStandAboveTheirColumns)
{
    const BApplication app("application/x-vnd.Quorvane.ResultsTest");
    ResultsWin* window = new ResultsWin(3);
    window->Show();
    ASSERT_TRUE(screen::BecomesActive("Results"));
    const BRect list = Find("list").frame;
    const std::tuple<const char*, const char*, float> rows[] = { { "banner1", "Test", 5 },
        { "banner2", "Units", 188 }, { "cpus3", "3 CPU", 290 }, { "cpus1", "1 CPU", 400 } };
    for (const auto& [view, text, left] : rows) {
        const screen::Widget title = Find(view);
        EXPECT_EQ(title.text, text);
        EXPECT_EQ(title.frame.left, list.left + left) << view;
        EXPECT_LT(title.frame.bottom, list.top) << view;
    }
    EXPECT_FALSE(Find("cpus0").exists || Find("cpus4").exists);
}

TEST(ResultsWin, KeepsTypedNamesForTheNextSaveAndTakesEveryOtherAnswerForNo)
{
    const ThisMachine tree;
    AddPciFunction(tree, "0000:00:02.0", PciConfig(0x1002, 0x0abc, 0x030000));
    const BApplication app("application/x-vnd.Quorvane.ResultsTest");
    Results run(true);
    AddMetric(run, "Memory", { 1 });
    ResultsWin* window = new ResultsWin(1);
    window->Update(run, false);
    window->Show();
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
        screen::Key("Return");
        ASSERT_TRUE(isActive("Save As"));
        screen::Key("Escape");
        ASSERT_TRUE(isActive("Results"));
    }
    ASSERT_TRUE(window->Lock());
    EXPECT_TRUE(window->QuitRequested());
    window->Quit();
}
