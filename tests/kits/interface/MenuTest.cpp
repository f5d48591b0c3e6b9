#include "MenuBar.h"
#include "TestWindow.h"

namespace {

// "Tests": Test (1, Ctrl+T), All (2, Ctrl+A), separator, and the menu "More": One (3), Two (4).
BMenuBar* MakeBar()
{
    BMenuBar* bar = new BMenuBar(BRect(0, 0, 9, 9), "bar");
    BMenu* menu = new BMenu("Tests");
    menu->AddItem(new BMenuItem("Test", new BMessage(1), 'T'));
    menu->AddItem(new BMenuItem("All", new BMessage(2), 'A'));
    menu->AddItem(new BSeparatorItem);
    BMenu* more = new BMenu("More");
    more->SetRadioMode(true);
    more->AddItem(new BMenuItem("One", new BMessage(3)));
    more->AddItem(new BMenuItem("Two", new BMessage(4)));
    menu->AddItem(more);
    bar->AddItem(menu);
    return bar;
}

} // namespace

TEST_F(WindowTest, MenuItemsAnswerMouseShortcutAndLetters)
{
    BMenuBar* bar = MakeBar();
    fWindow->AddChild(bar);
    EXPECT_EQ(bar->Frame().Width(), fWindow->Bounds().Width());
    BMenu* more = bar->FindItem("One")->Menu();
    more->ItemAt(1)->SetMarked(true);
    Show();
    EXPECT_TRUE(screen::ClickMenu({ "Tests", "Test" }));
    fLog->WaitFor(1);
    screen::Key("ctrl+a");
    fLog->WaitFor(2);
    screen::Key("alt+t"); // opens "Tests"
    EXPECT_SOON(screen::FindMenuItem("All").exists);
    screen::Key("a");
    fLog->WaitFor(3);
    screen::Key("ctrl+a"); // once, though the bar has had the keyboard
    fLog->WaitFor(4);
    EXPECT_TRUE(screen::ClickMenu({ "Tests", "More", "One" }));
    EXPECT_EQ(fLog->WaitFor(5), (Entries { "1 0", "2 1", "2 1", "2 1", "3 0" }));
    EXPECT_STREQ(Locked([&] { return more->FindMarked()->Label(); }), "One");
    EXPECT_FALSE(Locked([&] { return more->ItemAt(1)->IsMarked(); })) << "it is a radio menu";
}

TEST_F(WindowTest, ItemsComeAndGoWhileTheMenuIsInItsWindow)
{
    BMenuBar* bar = MakeBar();
    fWindow->AddChild(bar);
    Show();
    Locked([&] {
        BMenu* menu = bar->ItemAt(0)->Submenu();
        delete menu->RemoveItem(static_cast<int32>(0));
        menu->ItemAt(0)->SetEnabled(false);
        BMenuItem* one = menu->FindItem("One");
        EXPECT_FALSE(menu->AddItem(one)); // it stands in the other menu
        one->Menu()->SetEnabled(false);
        EXPECT_FALSE(one->IsEnabled());
        menu->AddItem(new BMenuItem("New", new BMessage(9), 'N', B_SHIFT_KEY));
    });
    screen::Key("ctrl+t"); // gone
    screen::Key("ctrl+a"); // disabled
    screen::Key("ctrl+shift+n");
    fLog->WaitFor(1);
    EXPECT_TRUE(screen::ClickMenu({ "Tests" }));
    EXPECT_SOON(screen::FindMenuItem("All").exists);
    EXPECT_FALSE(screen::FindMenuItem("All").enabled);
    EXPECT_TRUE(screen::ClickMenu({ "New" }));
    EXPECT_EQ(fLog->WaitFor(2), (Entries { "9 3", "9 3" }));
    Locked([&] {
        delete bar; // takes itself and its shortcuts out
    });
    EXPECT_EQ(fWindow->KeyMenuBar(), nullptr);
    screen::Key("ctrl+shift+n");
    EXPECT_EQ(fLog->Now().size(), 2u);
}
