#include "TestWindow.h"

TEST_F(WindowTest, StandsWhereItsFrameSays)
{
    Show();
    EXPECT_SOON(screen::Find("Test").frame == BRect(200, 150, 499, 349));
    fWindow->MoveTo(320, 240);
    fWindow->ResizeTo(199, 99);
    const BRect moved(320, 240, 519, 339);
    EXPECT_EQ(fWindow->Frame(), moved);
    EXPECT_SOON(screen::Find("Test").frame == moved);
    fWindow->Hide();
    fWindow->Hide();
    fWindow->Show();
    EXPECT_FALSE(screen::Find("Test").exists) << "hidden as often as it was";
    fWindow->Show();
    EXPECT_SOON(screen::Find("Test").frame == moved);
    EXPECT_EQ(Locked([&] { return fWindow->Frame(); }), moved);
}

TEST_F(WindowTest, TheUsersMovesAndSizesArriveInFrameAndViews)
{
    BView* view = new BView(fWindow->Bounds(), "all", B_FOLLOW_ALL_SIDES, 0);
    fWindow->AddChild(view);
    Show();
    ASSERT_EQ(system("wmctrl -r Test -e 0,300,220,400,300"), 0);
    ASSERT_TRUE(Becomes([&] { return fWindow->Bounds() == BRect(0, 0, 399, 299); }));
    EXPECT_EQ(Locked([&] { return view->Frame(); }), BRect(0, 0, 399, 299));
    EXPECT_TRUE(Becomes([&] { return fWindow->Frame() == screen::Find("Test").frame; }));
    EXPECT_EQ(Locked([&] { return fWindow->fPlaces.back(); }), fWindow->Frame().LeftTop());
}

TEST_F(WindowTest, AReportOlderThanTheProgramsOwnMoveIsDropped)
{
    Show();
    Locked([&] { // so that the report of the user's move waits
        fWindow->fPlaces.clear();
        EXPECT_EQ(system("wmctrl -r Test -e 0,100,300,-1,-1"), 0);
        EXPECT_SOON(screen::Find("Test").frame.top >= 300);
        fWindow->PostMessage(5); // keeps it from being replaced by the next one
        fWindow->MoveTo(400, 200);
    });
    EXPECT_TRUE(Becomes([&] { return !fWindow->fPlaces.empty(); }));
    EXPECT_EQ(Locked([&] { return fWindow->fPlaces[0]; }), BPoint(400, 200));
}

TEST_F(WindowTest, OneThatMayNotBeResizedKeepsItsSizeAndTheProgramMayChangeIt)
{
    fWindow->SetFlags(B_NOT_RESIZABLE | B_NOT_CLOSABLE);
    Show();
    screen::Key("alt+F4"); // not closable either
    // The window manager may learn of flags and limits only after it was asked.
    const auto comesTo = [&](const char* place, float left, float right) {
        return Becomes([&] {
            EXPECT_EQ(system((std::string("wmctrl -r Test -e 0,") + place).c_str()), 0);
            const BRect frame = screen::Find("Test").frame;
            return frame.left >= left && frame.Width() == right && fWindow->Frame() == frame;
        });
    };
    EXPECT_TRUE(comesTo("300,220,400,300", 300, 299)) << "it is moved only";
    fWindow->ResizeTo(219, 119);
    EXPECT_TRUE(comesTo("400,220,400,300", 400, 219));
    fWindow->SetFlags(B_NOT_CLOSABLE);
    fWindow->SetSizeLimits(149, 259, 99, 399);
    EXPECT_TRUE(comesTo("300,220,400,300", 300, 259)) << "no more than the most";
    EXPECT_EQ(Locked([&] { return fWindow->Bounds(); }), BRect(0, 0, 259, 299));
    EXPECT_EQ(fLog->Now(), Entries());
}

TEST_F(WindowTest, ShortcutsSendTheirMessagesAndTheLastOneGivenCounts)
{
    fWindow->AddShortcut('t', B_COMMAND_KEY, new BMessage(1), fWindow);
    fWindow->AddShortcut('T', B_COMMAND_KEY, new BMessage(2), fWindow);
    fWindow->AddShortcut('t', B_SHIFT_KEY, new BMessage(3), fWindow);
    fWindow->AddShortcut('g', B_COMMAND_KEY, new BMessage(4));
    fWindow->RemoveShortcut('g', B_COMMAND_KEY);
    Show();
    for (const char* keys : { "ctrl+g", "ctrl+t", "ctrl+shift+t" })
        screen::Key(keys);
    EXPECT_EQ(fLog->WaitFor(2), (Entries { "2", "3" }));
    fWindow->RemoveShortcut('t', B_SHIFT_KEY);
    for (const char* keys : { "ctrl+shift+t", "ctrl+t" })
        screen::Key(keys);
    EXPECT_EQ(fLog->WaitFor(3), (Entries { "2", "3", "2" }));
}
