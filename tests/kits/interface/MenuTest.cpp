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
    EXPECT_TRUE(menu.IsEnabled() && top->IsEnabled() && more->IsEnabled() && deep->IsEnabled());
    menu.SetEnabled(false);
    EXPECT_FALSE(menu.IsEnabled() || top->IsEnabled() || more->IsEnabled() || deep->IsEnabled());
    menu.SetEnabled(true);
    top->SetEnabled(false);
    EXPECT_FALSE(top->IsEnabled() || more->IsEnabled() || deep->IsEnabled());
    one->SetMarked(true);
    top->SetMarked(true);
    EXPECT_TRUE(one->IsMarked() && menu.FindMarked() == top);
}

TEST_F(WindowTest, MenuItemsAnswerMouseShortcutAndLettersAsTheyComeAndGo)
{
    BMenuBar* bar = new BMenuBar(BRect(4, 0, 9, 9), "bar");
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
    more->ItemAt(1)->SetMarked(true);
    const auto commands = [&](const Row& words) {
        BMenuItem* item = Locked([&] { return bar->FindItem(words.back().c_str()); });
        return Commands {
            { "name", [=] { item->SetLabel(words[1].c_str()); } },
            { "mark", [=] { item->SetMarked(true); } },
            { "delete", [=] { delete item; } },
            { "disable", [=] { item->SetEnabled(false); } },
            { "close", [=] { item->Submenu()->SetEnabled(false); } },
            { "key", [=] { item->SetShortcut(words[1][0], 0); } },
            { "no key", [=] { item->SetShortcut(0, 0); } },
            { "new",
                [=] { menu->AddItem(new BMenuItem("New", new BMessage(9), 'N', B_SHIFT_KEY)); } },
            { "also", [=, this] { fWindow->AddShortcut('b', 0, new BMessage(8)); } },
            { "out", [=] { EXPECT_TRUE(bar->RemoveSelf() && !more->Looper()); } },
            { "in", [=, this] { fWindow->AddChild(bar); } },
        };
    };
    Follow("menu.txt", commands, [&] { return screen::Tree("Test"); });
    BMenuItem lone("lone", new BMessage(7));
    EXPECT_EQ(lone.SetTarget(fWindow), B_OK);
    EXPECT_EQ(lone.Invoke(), B_OK);
    EXPECT_TRUE(fLog->WaitFor("7 -1"));
    EXPECT_EQ(fWindow->KeyMenuBar(), bar);
    Locked([&] { delete bar; }); // takes itself out
    EXPECT_EQ(fWindow->KeyMenuBar(), nullptr);
}
