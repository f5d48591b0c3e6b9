#include "server/DisplayServer.h"
#include "tests/support/Rows.h"
#include "TestWindow.h"

#include <QApplication>
#include <QWidget>

TEST_F(WindowTest, StandsWhereItsFrameSaysAndClosesWhenItAgrees)
{
    Show();
    EXPECT_SOON(screen::Find("Test").frame == BRect(200, 150, 499, 349));
    fWindow->MoveTo(320, 240);
    fWindow->ResizeTo(199, 99);
    const BRect moved(320, 240, 519, 339);
    EXPECT_EQ(fWindow->Frame(), moved);
    EXPECT_SOON(screen::Find("Test").frame == moved);
    fWindow->Hide();
    EXPECT_FALSE(screen::Find("Test").exists);
    fWindow->Hide();
    fWindow->Show();
    EXPECT_FALSE(screen::Find("Test").exists) << "hidden as often as it was";
    fWindow->Show();
    EXPECT_SOON(screen::Find("Test").frame == moved);
    EXPECT_EQ(Locked([&] { return fWindow->Frame(); }), moved);
    screen::Key("alt+F4");
    EXPECT_TRUE(fLog->WaitFor("quit requested"));
    EXPECT_TRUE(screen::Find("Test").exists) << "it has refused";
    screen::Key("ctrl+w");
    EXPECT_EQ(fLog->WaitFor(2).size(), 2u);
    EXPECT_EQ(system("xdotool search --name '^Test$' windowclose"), 0); // takes it off the screen
    EXPECT_EQ(fLog->WaitFor(3), Entries(3, "quit requested"));
}

TEST_F(WindowTest, TheUsersMovesAndSizesArriveInFrameAndViewsUnlessTheyAreOld)
{
    BView* view = new BView(fWindow->Bounds(), "all", B_FOLLOW_ALL_SIDES, 0);
    fWindow->AddChild(view);
    Show();
    ASSERT_EQ(system("wmctrl -r Test -e 0,300,220,400,300"), 0);
    ASSERT_TRUE(Becomes([&] { return fWindow->fSize == BPoint(399, 299); }));
    EXPECT_EQ(Locked([&] { return fWindow->Bounds() & view->Frame(); }), BRect(0, 0, 399, 299));
    EXPECT_TRUE(Becomes([&] { return fWindow->Frame() == screen::Find("Test").frame; }));
    EXPECT_EQ(Locked([&] { return fWindow->fPlaces.back(); }), fWindow->Frame().LeftTop());
    Locked([&] { // so that the report of the user's move waits, and is older than the program's
        fWindow->fPlaces.clear();
        EXPECT_EQ(system("wmctrl -r Test -e 0,100,300,-1,-1"), 0);
        EXPECT_SOON(screen::Find("Test").frame.top >= 300);
        fWindow->PostMessage(5); // keeps it from being replaced by the next one
        fWindow->MoveTo(400, 200);
    });
    EXPECT_TRUE(Becomes([&] { return !fWindow->fPlaces.empty(); }));
    EXPECT_EQ(Locked([&] { return fWindow->fPlaces[0]; }), BPoint(400, 200));
}

TEST_F(WindowTest, ShortcutsSendTheirMessagesAndTheLastOneGivenCounts)
{
    fWindow->AddShortcut('t', B_COMMAND_KEY, new BMessage(1), fWindow);
    fWindow->AddShortcut('T', B_COMMAND_KEY, new BMessage(2), fWindow);
    fWindow->AddShortcut('t', B_SHIFT_KEY, new BMessage(3), fWindow);
    fWindow->AddShortcut('t', B_CONTROL_KEY, new BMessage(5));
    fWindow->AddShortcut('t', B_OPTION_KEY, new BMessage(6), fWindow);
    fWindow->AddShortcut('g', B_COMMAND_KEY, new BMessage(4));
    fWindow->RemoveShortcut('g', B_COMMAND_KEY);
    fWindow->SetFlags(B_NOT_CLOSABLE);
    Show();
    display::Call([] { QApplication::activeWindow()->close(); });
    for (const char* keys :
        { "ctrl+w", "ctrl+g", "ctrl+t", "ctrl+shift+t", "ctrl+alt+t", "ctrl+super+t" })
        screen::Key(keys);
    EXPECT_EQ(fLog->WaitFor(4), (Entries { "2", "3", "5", "6" }));
    fWindow->RemoveShortcut('t', B_SHIFT_KEY);
    fWindow->AddShortcut('t', B_SHIFT_KEY, new BMessage(7));
    fWindow->RemoveShortcut('t', B_SHIFT_KEY);
    fWindow->AddShortcut('t', B_SHIFT_KEY, new BMessage(8));
    for (const char* keys : { "ctrl+shift+t", "ctrl+t" })
        screen::Key(keys);
    EXPECT_EQ(fLog->WaitFor(6), (Entries { "2", "3", "5", "6", "8", "2" }));
    fWindow->SetWorkspaces(2);
    EXPECT_SOON(!screen::Find("Test").exposed);
}

TEST_F(WindowTest, TellsTheWindowManagerItsKindItsLimitsAndItsWorkspaces)
{
    const TempFolder folder;
    const std::string command = "xprop -name Kind _MOTIF_WM_HINTS WM_NORMAL_HINTS _NET_WM_DESKTOP "
                                "_NET_WM_WINDOW_TYPE _NET_WM_STATE > ";
    for (const TextRow& row : ReadRows("kits/interface/windows.txt")) {
        std::vector<uint32> given;
        for (const std::string& field : RowOf(row.given))
            given.push_back(std::stoul(field, nullptr, 0));
        auto* window =
            new BWindow(BRect(50, 60, 349, 259), "Kind", static_cast<window_look>(given.at(0)),
                static_cast<window_feel>(given.at(1)), given.at(2), given.at(3));
        window->SetSizeLimits(99, 399, 49, 40000);
        window->SetSizeLimits(100, 99, 0, 10);
        window->SetSizeLimits(0, 10, 100, 99); // neither is possible
        window->ResizeTo(500, 20);
        EXPECT_EQ(window->Frame(), BRect(50, 60, 449, 109));
        window->Show();
        EXPECT_SOON(system("xprop -name Kind _NET_FRAME_EXTENTS 2>&1 | grep -q =") == 0);
        EXPECT_EQ(system((command + (folder / "told")).c_str()), 0);
        EXPECT_EQ(ReadFile(folder / "told"), row.told + "\n") << row.given;
        window->Lock();
        window->Quit();
    }
}
