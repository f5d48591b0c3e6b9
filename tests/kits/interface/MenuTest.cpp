#include "TestWindow.h"

#include "MenuBar.h"

namespace {

typedef std::vector<std::string> Events;

// "Tests": Test (1, Ctrl+T), All (2, Ctrl+A), separator, and the menu "More": One (3), Two (4).
BMenuBar* MakeBar()
{
    BMenuBar* bar = new BMenuBar(BRect(0, 0, 9, 9), "bar");
    BMenu* menu = new BMenu("Tests");
    menu->AddItem(new BMenuItem("Test", new BMessage(1), 'T'));
    menu->AddItem(new BMenuItem("All", new BMessage(2), 'A'));
    menu->AddSeparatorItem();
    BMenu* more = new BMenu("More");
    more->SetRadioMode(true);
    more->AddItem(new BMenuItem("One", new BMessage(3)));
    more->AddItem(new BMenuItem("Two", new BMessage(4)));
    menu->AddItem(more);
    bar->AddItem(menu);
    return bar;
}

} // namespace

TEST(Menu, FindsItsItemsAndGivesThemBack)
{
    BMenu menu("Menu");
    BMenu* below = new BMenu("Below");
    BMenuItem* deep = new BMenuItem("Deep", new BMessage(5));
    EXPECT_TRUE(below->AddItem(deep));
    EXPECT_TRUE(menu.AddItem(new BMenuItem("First", new BMessage(6))));
    EXPECT_TRUE(menu.AddItem(below, 0));
    EXPECT_FALSE(menu.AddItem(deep)); // it stands in the other menu
    EXPECT_FALSE(menu.AddItem(new BMenu("Late"), 7) && menu.CountItems() == 3);
    EXPECT_EQ(menu.FindItem("Deep"), deep);
    EXPECT_EQ(menu.FindItem(uint32(5)), deep);
    EXPECT_EQ(menu.FindItem("Deeper"), nullptr);
    EXPECT_EQ(below->Supermenu(), &menu);
    menu.SetEnabled(false);
    EXPECT_FALSE(deep->IsEnabled());
    EXPECT_TRUE(menu.RemoveItem(below));
    EXPECT_EQ(menu.CountItems(), 1);
    EXPECT_TRUE(deep->IsEnabled());
    EXPECT_EQ(below->Superitem(), nullptr);
    delete below;
}

TEST_F(WindowTest, MenuItemsAnswerMouseShortcutAndLetters)
{
    BMenuBar* bar = MakeBar();
    fWindow->AddChild(bar);
    EXPECT_EQ(fWindow->KeyMenuBar(), bar);
    EXPECT_EQ(bar->Frame().Width(), fWindow->Bounds().Width());
    Show();
    EXPECT_TRUE(screen::ClickMenu({ "Tests", "Test" }));
    EXPECT_TRUE(fLog->WaitForCount(1));
    screen::Key("ctrl+a");
    EXPECT_TRUE(fLog->WaitForCount(2));
    screen::Key("alt+t"); // opens "Tests"
    EXPECT_TRUE(screen::WaitFor([] { return screen::FindMenuItem("All").exists; }));
    screen::Key("a");
    EXPECT_TRUE(fLog->WaitForCount(3));
    EXPECT_EQ(fLog->Events(), (Events { "1", "2", "2" }));
}

TEST_F(WindowTest, ADisabledItemDoesNothingByMouseOrShortcut)
{
    BMenuBar* bar = MakeBar();
    fWindow->AddChild(bar);
    BMenuItem* test = bar->FindItem("Test");
    test->SetEnabled(false);
    Show();
    screen::Key("ctrl+t");
    EXPECT_TRUE(screen::ClickMenu({ "Tests" }));
    EXPECT_TRUE(screen::WaitFor([] { return screen::FindMenuItem("Test").exists; }));
    EXPECT_FALSE(screen::FindMenuItem("Test").enabled);
    EXPECT_TRUE(screen::ClickMenu({ "Test" }));
    screen::Key("Escape");
    screen::Key("Escape");
    screen::Key("ctrl+a");
    EXPECT_TRUE(fLog->WaitForCount(1));
    EXPECT_EQ(fLog->Events(), Events { "2" });
    Locked([&] {
        test->SetEnabled(true);
        return true;
    });
    screen::Key("ctrl+t");
    EXPECT_TRUE(fLog->WaitForCount(2));
    EXPECT_EQ(fLog->Events(), (Events { "2", "1" }));
}

TEST_F(WindowTest, ARadioMenuMarksWhatWasChosen)
{
    BMenuBar* bar = MakeBar();
    fWindow->AddChild(bar);
    BMenu* more = bar->FindItem("One")->Menu();
    more->ItemAt(1)->SetMarked(true);
    Show();
    EXPECT_TRUE(screen::ClickMenu({ "Tests", "More", "One" }));
    EXPECT_TRUE(fLog->WaitForCount(1));
    EXPECT_STREQ(Locked([&] { return more->FindMarked()->Label(); }), "One");
    EXPECT_FALSE(Locked([&] { return more->ItemAt(1)->IsMarked(); }));
}

TEST_F(WindowTest, ItemsComeAndGoWhileTheMenuIsInItsWindow)
{
    BMenuBar* bar = MakeBar();
    fWindow->AddChild(bar);
    Show();
    Locked([&] {
        BMenu* menu = bar->SubmenuAt(0);
        delete menu->RemoveItem(int32(0));
        menu->AddItem(new BMenuItem("New", new BMessage(9), 'N', B_SHIFT_KEY));
        return true;
    });
    screen::Key("ctrl+t"); // gone
    screen::Key("ctrl+shift+n");
    EXPECT_TRUE(fLog->WaitForCount(1));
    EXPECT_TRUE(screen::ClickMenu({ "Tests", "New" }));
    EXPECT_TRUE(fLog->WaitForCount(2));
    EXPECT_EQ(fLog->Events(), (Events { "9", "9" }));
    Locked([&] {
        delete bar; // takes itself and its shortcuts out
        return true;
    });
    EXPECT_EQ(fWindow->KeyMenuBar(), nullptr);
    screen::Key("ctrl+shift+n");
    EXPECT_EQ(fLog->Events().size(), 2u);
}
