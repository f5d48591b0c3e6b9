#include "MenuBar.h"
#include "TestWindow.h"

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

TEST_F(WindowTest, MenuItemsAnswerMouseShortcutAndLettersAsTheyComeAndGo)
{
    BMenuBar* bar = new BMenuBar(BRect(0, 0, 9, 9), "bar");
    BMenu *menu = new BMenu("Tests"), *more = new BMenu("More");
    menu->AddItem(new BMenuItem("Test", new BMessage(1), 'T'));
    menu->AddItem(new BMenuItem("All", new BMessage(2), 'A'));
    menu->AddItem(new BSeparatorItem);
    more->SetRadioMode(true);
    more->AddItem(new BMenuItem("One", new BMessage(3)));
    more->AddItem(new BMenuItem("Two", new BMessage(4)));
    menu->AddItem(more);
    bar->AddItem(menu);
    fWindow->AddChild(bar);
    EXPECT_EQ(bar->Frame().Width(), fWindow->Bounds().Width());
    more->ItemAt(1)->SetMarked(true);
    Entries expected = { "1 0", "2 1", "2 1", "2 1", "3 0" };
    const auto press = [](const Entries& keys) {
        std::for_each(keys.begin(), keys.end(), screen::Key);
    };
    const auto log = [&] { return fLog->WaitFor(expected.size()); };
    Show();
    EXPECT_TRUE(screen::ClickMenu({ "Tests", "Test" }));
    fLog->WaitFor(1);
    press({ "ctrl+a" });
    fLog->WaitFor(2);
    press({ "alt+t" }); // opens "Tests"
    EXPECT_SOON(screen::FindMenuItem("All").exists);
    press({ "a" });
    fLog->WaitFor(3);
    press({ "ctrl+a" }); // once, though the bar has had the keyboard
    fLog->WaitFor(4);
    EXPECT_TRUE(screen::ClickMenu({ "Tests", "More", "One" }));
    EXPECT_EQ(log(), expected);
    Locked([&] {
        EXPECT_STREQ(more->FindMarked()->Label(), "One");
        EXPECT_FALSE(more->ItemAt(1)->IsMarked()) << "it is a radio menu";
        delete menu->RemoveItem(static_cast<int32>(0));
        menu->ItemAt(0)->SetEnabled(false);
        menu->AddItem(new BMenuItem("New", new BMessage(9), 'N', B_SHIFT_KEY));
    });
    press({ "ctrl+t", "ctrl+a", "ctrl+shift+n" }); // gone, disabled, new
    expected.push_back("9 3");
    EXPECT_EQ(log(), expected);
    EXPECT_TRUE(screen::ClickMenu({ "Tests" }));
    EXPECT_SOON(screen::FindMenuItem("All").exists);
    EXPECT_FALSE(screen::FindMenuItem("All").enabled);
    EXPECT_TRUE(screen::ClickMenu({ "New" }));
    expected.push_back("9 3");
    EXPECT_EQ(log(), expected);
    Locked([&] {
        bar->FindItem("New")->SetShortcut('m', 0);
        bar->FindItem("All")->SetShortcut('b', 0);
        fWindow->AddShortcut('b', 0, new BMessage(8)); // is the window's from now on
    });
    press({ "ctrl+shift+n", "ctrl+b", "ctrl+m" });
    expected.insert(expected.end(), { "8", "9 3" });
    EXPECT_EQ(log(), expected);
    Locked([&] {
        delete bar; // takes itself and its shortcuts out
    });
    EXPECT_EQ(fWindow->KeyMenuBar(), nullptr);
    press({ "ctrl+m", "ctrl+b" });
    expected.push_back("8");
    EXPECT_EQ(log(), expected);
}
