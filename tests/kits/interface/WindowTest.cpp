#include "tests/support/Rows.h"
#include "TestWindow.h"

TEST_F(WindowTest, TheUsersMovesAndSizesArriveInFrameAndViewsUnlessTheyAreOld)
{
    Show();
    ASSERT_EQ(system("wmctrl -r Test -e 0,300,220,400,300"), 0);
    ASSERT_TRUE(Becomes([&] { return fWindow->fSize == BPoint(399, 299); }));
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

TEST_F(WindowTest, TellsTheWindowManagerItsKindItsLimitsAndItsWorkspaces)
{
    const TempFolder folder;
    const std::string command = "xprop -name Kind _MOTIF_WM_HINTS WM_NORMAL_HINTS _NET_WM_DESKTOP "
                                "_NET_WM_WINDOW_TYPE _NET_WM_STATE > ";
    for (const TextRow& row : ReadRows("kits/interface/windows.txt")) {
        std::vector<uint32> given;
        for (const std::string& field : RowOf(row.given))
            given.push_back(std::stoul(field, nullptr, 0));
        const BRect frame(50, 60, 349, 259);
        auto* window = given.size() == 1
            ? new BWindow(frame, "Kind", static_cast<window_type>(given[0]), 0)
            : new BWindow(frame, "Kind", static_cast<window_look>(given[0]),
                static_cast<window_feel>(given[1]), given.at(2), given.at(3));
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
