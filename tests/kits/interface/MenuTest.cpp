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

TEST(Menu, KnowsItsItemsWhichAreEnabledWithAllAboveThem)
{
    BMenu menu("menu");
    auto *more = new BMenu("more"), *other = new BMenu("other");
    auto *one = new BMenuItem("one", nullptr), *deep = new BMenuItem("deep", nullptr);
    EXPECT_TRUE(menu.AddItem(one) && menu.AddItem(more, 0) && more->AddItem(deep));
    EXPECT_FALSE(menu.AddItem(one) || menu.AddItem(more) || menu.AddItem(other, 3)
        || menu.AddItem(other, -1) || menu.AddItem(static_cast<BMenu*>(nullptr)));
    EXPECT_TRUE(menu.AddItem(other, 2));
    BMenuItem* top = menu.ItemAt(0);
    EXPECT_TRUE(top->Submenu() == more && more->Superitem() == top && more->Supermenu() == &menu);
    EXPECT_TRUE(menu.ItemAt(1) == one && !menu.ItemAt(3) && !menu.ItemAt(-1));
    EXPECT_TRUE(menu.IndexOf(one) == 1 && menu.IndexOf(deep) == B_ERROR);
    EXPECT_TRUE(menu.FindItem("deep") == deep && !menu.FindItem("none") && !menu.FindItem(nullptr));
    EXPECT_FALSE(menu.RemoveItem(deep) || menu.RemoveItem(3) || menu.RemoveItem(-1));
    std::string enabled; // menu, item with a menu, that menu, item in it; one after the other off
    for (int off = 0; off < 4; off++) {
        for (const bool on : { false, true }) {
            off == 0       ? menu.SetEnabled(on)
                : off == 2 ? more->SetEnabled(on)
                           : (off == 1 ? top : deep)->SetEnabled(on);
            for (const bool is :
                { menu.IsEnabled(), top->IsEnabled(), more->IsEnabled(), deep->IsEnabled() })
                enabled += is ? '1' : '0';
            enabled += ' ';
        }
    }
    EXPECT_EQ(enabled, "0000 1111 1000 1111 1000 1111 1110 1111 ");
    one->SetMarked(true);
    top->SetMarked(true);
    EXPECT_TRUE(one->IsMarked() && menu.FindMarked() == top);
    menu.SetRadioMode(true);
    one->SetMarked(true);
    EXPECT_TRUE(menu.FindMarked() == one && !top->IsMarked());
    BSeparatorItem line;
    line.SetEnabled(true);
    EXPECT_FALSE(line.IsEnabled());
}

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
        bar->FindItem("New")->SetShortcut('m', 0);
        bar->FindItem("All")->SetShortcut('b', 0);
        fWindow->AddShortcut('b', 0, new BMessage(8)); // is the window's from now on
    });
    for (const char* keys : { "ctrl+shift+n", "ctrl+b", "ctrl+m" })
        screen::Key(keys);
    EXPECT_EQ(fLog->WaitFor(4).back(), "9 3");
    Locked([&] {
        delete bar; // takes itself and its shortcuts out
    });
    EXPECT_EQ(fWindow->KeyMenuBar(), nullptr);
    for (const char* keys : { "ctrl+m", "ctrl+b" })
        screen::Key(keys);
    EXPECT_EQ(fLog->WaitFor(5), (Entries { "9 3", "9 3", "8", "9 3", "8" }));
}
